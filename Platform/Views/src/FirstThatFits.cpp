#include "ViewNode.h"

namespace platform {

namespace {

class FirstThatFitsNode final : public ViewNode {
  public:
    FirstThatFitsNode(Axis axis, std::vector<View> candidates)
        : axis_(axis), candidates_(std::move(candidates)) {}

    Extent measure(const Proposal& proposal, const Inherited& inherited) const override {
        return chosen(proposal, inherited).measure(proposal, inherited);
    }
    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        chosen(Proposal::of(frame.size()), inherited).place(frame, inherited, out);
    }
    Flexibility flexibility(Axis, const Inherited&) const override { return Flexibility::stretching; }

  private:
    const ViewNode& chosen(const Proposal& proposal, const Inherited& inherited) const {
        const auto offered = proposal.along(axis_);
        Proposal ideal = proposal;
        (axis_ == Axis::horizontal ? ideal.width : ideal.height) = std::nullopt;
        // Heights are sums of line boxes and paddings; only the sum's rounding is forgiven.
        constexpr double tolerance = 1e-6;
        for (const auto& candidate : candidates_) {
            if (!offered) return *candidate.node();
            if (candidate.node()->measure(ideal, inherited).along(axis_) <= *offered + tolerance) {
                return *candidate.node();
            }
        }
        return *candidates_.back().node();
    }

    Axis axis_;
    std::vector<View> candidates_;
};

}  // namespace

View firstThatFits(Axis axis, std::vector<View> candidates) {
    std::erase_if(candidates, [](const View& view) { return view.isEmpty(); });
    if (candidates.empty()) return {};
    return View(std::make_shared<FirstThatFitsNode>(axis, std::move(candidates)));
}

}  // namespace platform
