#include "StackPlan.h"

#include <algorithm>
#include <numeric>

namespace platform {

namespace {

std::vector<View> withoutEmpty(std::vector<View> children) {
    std::erase_if(children, [](const View& child) { return child.isEmpty(); });
    return children;
}

class StackNode : public ViewNode {
  public:
    StackNode(Axis axis, double spacing, std::vector<View> children)
        : axis_(axis), spacing_(spacing), children_(std::move(children)) {}

    Flexibility flexibility(Axis axis, const Inherited& outer) const override {
        const Inherited inherited = within(outer);
        auto result = Flexibility::fixed;
        for (const auto& child : children_) {
            if (child.node()->isSpacer() && axis != axis_) continue;
            result = std::max(result, child.node()->flexibility(axis, inherited));
        }
        return result;
    }

  protected:
    Inherited within(const Inherited& outer) const {
        Inherited inherited = outer;
        inherited.stackAxis = axis_;
        return inherited;
    }

    const StackPlan& plan(const Proposal& proposal, const Inherited& inherited) const {
        const StackPlanCache::Key key{this,
                                      proposal.width,
                                      proposal.height,
                                      inherited.font,
                                      inherited.lineLimit,
                                      inherited.minimumScaleFactor,
                                      inherited.allowsTightening,
                                      inherited.isResizable};
        if (const auto* known = inherited.plans->find(key)) return *known;
        return inherited.plans->add(key, newPlan(proposal, inherited));
    }

    const std::vector<View>& children() const { return children_; }

  private:
    StackPlan newPlan(const Proposal& proposal, const Inherited& inherited) const {
        std::vector<StackItem> items;
        items.reserve(children_.size());
        for (const auto& child : children_) {
            const ViewNode& node = *child.node();
            items.push_back({node.flexibility(axis_, inherited), node.isSpacer(), node.minimumLength(),
                             [&](std::optional<double> offered) {
                                 return node.measure(along(offered, proposal), inherited).along(axis_);
                             }});
        }
        StackPlan result;
        result.gaps = gapsBefore(items, spacing_);
        const auto lengths = distribute(items, spacing_, proposal.along(axis_));
        const bool isIdeal = !proposal.along(axis_);
        for (std::size_t i = 0; i < children_.size(); ++i) {
            // An ideal length is requested as such: a text rounds less than a proposal would make it.
            const auto offered = isIdeal ? std::nullopt : std::optional(lengths[i]);
            auto extent = children_[i].node()->measure(along(offered, proposal), inherited);
            (axis_ == Axis::horizontal ? extent.size.width : extent.size.height) = lengths[i];
            result.children.push_back(extent);
        }
        result.length = std::accumulate(lengths.begin(), lengths.end(), 0.0) +
                        std::accumulate(result.gaps.begin(), result.gaps.end(), 0.0);
        return result;
    }

    Proposal along(std::optional<double> length, const Proposal& proposal) const {
        return axis_ == Axis::horizontal ? Proposal{length, proposal.height}
                                         : Proposal{proposal.width, length};
    }

    Axis axis_;
    double spacing_;
    std::vector<View> children_;
};

class ColumnNode final : public StackNode {
  public:
    ColumnNode(ColumnOptions options, std::vector<View> children)
        : StackNode(Axis::vertical, options.spacing, std::move(children)), alignment_(options.alignment) {}

    Extent measure(const Proposal& proposal, const Inherited& outer) const override {
        const auto& stack = plan(proposal, within(outer));
        Extent result = Extent::of({0, stack.length});
        double y = 0;
        for (std::size_t i = 0; i < stack.children.size(); ++i) {
            const auto& child = stack.children[i];
            y += stack.gaps[i];
            result.size.width = std::max(result.size.width, child.size.width);
            if (child.hasText) {
                if (!result.hasText) result.firstBaseline = y + child.firstBaseline;
                result.lastBaseline = y + child.lastBaseline;
                result.hasText = true;
            }
            y += child.size.height;
        }
        return result;
    }

    void place(Rect frame, const Inherited& outer, std::vector<LaidOutNode>& out) const override {
        const Inherited inherited = within(outer);
        const auto& stack = plan(Proposal::of(frame.size()), inherited);
        auto& column = out.emplace_back();
        column.kind = LaidOutNode::Kind::column;
        column.frame = frame;
        double y = frame.y;
        for (std::size_t i = 0; i < stack.children.size(); ++i) {
            const Size size = stack.children[i].size;
            y += stack.gaps[i];
            const double x = frame.x + alignedOffset(alignment_, size.width, frame.width);
            children()[i].node()->place({x, y, size.width, size.height}, inherited, column.children);
            y += size.height;
        }
    }

  private:
    HorizontalAlignment alignment_;
};

class RowNode final : public StackNode {
  public:
    RowNode(RowOptions options, std::vector<View> children)
        : StackNode(Axis::horizontal, options.spacing, std::move(children)), alignment_(options.alignment) {}

    Extent measure(const Proposal& proposal, const Inherited& outer) const override {
        const auto& stack = plan(proposal, within(outer));
        const auto tops = topsOf(stack);
        Extent result;
        for (std::size_t i = 0; i < stack.children.size(); ++i) {
            const auto& child = stack.children[i];
            result.size.height = std::max(result.size.height, tops[i] + child.size.height);
            if (!child.hasText) continue;
            result.hasText = true;
            result.firstBaseline = std::max(result.firstBaseline, tops[i] + child.firstBaseline);
            result.lastBaseline = std::max(result.lastBaseline, tops[i] + child.lastBaseline);
        }
        result.size.width = stack.length;
        return result.hasText ? result : Extent::of(result.size);
    }

    void place(Rect frame, const Inherited& outer, std::vector<LaidOutNode>& out) const override {
        const Inherited inherited = within(outer);
        const auto& stack = plan(Proposal::of(frame.size()), inherited);
        const auto tops = topsOf(stack);
        auto& row = out.emplace_back();
        row.kind = LaidOutNode::Kind::row;
        row.frame = frame;
        double height = 0;
        for (std::size_t i = 0; i < tops.size(); ++i) {
            height = std::max(height, tops[i] + stack.children[i].size.height);
        }
        const double shift = alignedOffset(alignment_, height, frame.height);
        double x = frame.x;
        for (std::size_t i = 0; i < stack.children.size(); ++i) {
            const Size size = stack.children[i].size;
            x += stack.gaps[i];
            children()[i].node()->place({x, frame.y + shift + tops[i], size.width, size.height}, inherited,
                                        row.children);
            x += size.width;
        }
    }

  private:
    /// Distances of the children's tops from the top of the tightest box around them.
    std::vector<double> topsOf(const StackPlan& stack) const {
        std::vector<double> tops(stack.children.size(), 0);
        const bool byBaseline = alignment_ == VerticalAlignment::firstTextBaseline ||
                                alignment_ == VerticalAlignment::lastTextBaseline;
        double deepest = 0;
        for (const auto& child : stack.children)
            deepest = std::max(deepest, anchor(child));
        for (std::size_t i = 0; i < tops.size(); ++i) {
            const auto& child = stack.children[i];
            tops[i] =
                byBaseline ? deepest - anchor(child) : alignedOffset(alignment_, child.size.height, deepest);
        }
        return tops;
    }

    double anchor(const Extent& child) const {
        if (alignment_ == VerticalAlignment::firstTextBaseline) return child.firstBaseline;
        return alignment_ == VerticalAlignment::lastTextBaseline ? child.lastBaseline : child.size.height;
    }

    VerticalAlignment alignment_;
};

/// Layers of their own sizes, the first behind.
class LayersNode final : public ViewNode {
  public:
    LayersNode(Alignment alignment, std::vector<View> children)
        : alignment_(alignment), children_(std::move(children)) {}

    Extent measure(const Proposal& proposal, const Inherited& inherited) const override {
        Extent result;
        for (const auto& child : children_) {
            const auto extent = child.node()->measure(proposal, inherited);
            result.size.width = std::max(result.size.width, extent.size.width);
            result.size.height = std::max(result.size.height, extent.size.height);
        }
        return Extent::of(result.size);
    }

    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        auto& layers = out.emplace_back();
        layers.frame = frame;
        for (const auto& child : children_) {
            const Size size = child.node()->measure(Proposal::of(frame.size()), inherited).size;
            const double x = frame.x + alignedOffset(alignment_.horizontal, size.width, frame.width);
            const double y = frame.y + alignedOffset(alignment_.vertical, size.height, frame.height);
            child.node()->place({x, y, size.width, size.height}, inherited, layers.children);
        }
    }

    Flexibility flexibility(Axis axis, const Inherited& inherited) const override {
        auto result = Flexibility::fixed;
        for (const auto& child : children_) {
            result = std::max(result, child.node()->flexibility(axis, inherited));
        }
        return result;
    }

  private:
    Alignment alignment_;
    std::vector<View> children_;
};

}  // namespace

View vstack(ColumnOptions options, std::vector<View> children) {
    return View(std::make_shared<ColumnNode>(options, withoutEmpty(std::move(children))));
}

View hstack(RowOptions options, std::vector<View> children) {
    return View(std::make_shared<RowNode>(options, withoutEmpty(std::move(children))));
}

View zstack(Alignment alignment, std::vector<View> children) {
    return View(std::make_shared<LayersNode>(alignment, withoutEmpty(std::move(children))));
}

}  // namespace platform
