#include "ViewNode.h"

#include <algorithm>
#include <functional>

namespace platform {

namespace {

/// Changes what the views inside inherit.
class InheritingNode final : public WrapperNode {
  public:
    using Change = std::function<void(Inherited&)>;
    InheritingNode(View content, Change change)
        : WrapperNode(std::move(content)), change_(std::move(change)) {}

    Extent measure(const Proposal& proposal, const Inherited& outer) const override {
        return content().measure(proposal, changed(outer));
    }
    void place(Rect frame, const Inherited& outer, std::vector<LaidOutNode>& out) const override {
        content().place(frame, changed(outer), out);
    }
    Flexibility flexibility(Axis axis, const Inherited& outer) const override {
        return content().flexibility(axis, changed(outer));
    }

  private:
    Inherited changed(const Inherited& outer) const {
        Inherited inherited = outer;
        change_(inherited);
        return inherited;
    }

    Change change_;
};

class PaddingNode final : public WrapperNode {
  public:
    PaddingNode(View content, Insets insets) : WrapperNode(std::move(content)), insets_(insets) {}

    Extent measure(const Proposal& proposal, const Inherited& inherited) const override {
        const auto inner = [](std::optional<double> outer, double taken) {
            return outer ? std::optional(std::max(0.0, *outer - taken)) : std::nullopt;
        };
        auto extent = content().measure({inner(proposal.width, insets_.leading + insets_.trailing),
                                         inner(proposal.height, insets_.top + insets_.bottom)},
                                        inherited);
        extent.size.width += insets_.leading + insets_.trailing;
        extent.size.height += insets_.top + insets_.bottom;
        extent.firstBaseline += insets_.top;
        extent.lastBaseline += insets_.top;
        return extent;
    }
    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        content().place({frame.x + insets_.leading, frame.y + insets_.top,
                         std::max(0.0, frame.width - insets_.leading - insets_.trailing),
                         std::max(0.0, frame.height - insets_.top - insets_.bottom)},
                        inherited, out);
    }

  private:
    Insets insets_;
};

/// Sides of a fixed length, of all that is offered (`unbounded`) or, absent, of the content's.
class FrameNode final : public WrapperNode {
  public:
    FrameNode(View content, std::optional<double> width, std::optional<double> height, Alignment alignment)
        : WrapperNode(std::move(content)), width_(width), height_(height), alignment_(alignment) {}

    Extent measure(const Proposal& proposal, const Inherited& inherited) const override {
        auto extent = content().measure(inner(proposal), inherited);
        const Size own = extent.size;
        extent.size = {side(width_, proposal.width, own.width), side(height_, proposal.height, own.height)};
        const double shift = alignedOffset(alignment_.vertical, own.height, extent.size.height);
        extent.firstBaseline += shift;
        extent.lastBaseline += shift;
        return extent;
    }
    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        const Size size = content().measure(Proposal::of(frame.size()), inherited).size;
        content().place({frame.x + alignedOffset(alignment_.horizontal, size.width, frame.width),
                         frame.y + alignedOffset(alignment_.vertical, size.height, frame.height), size.width,
                         size.height},
                        inherited, out);
    }
    Flexibility flexibility(Axis axis, const Inherited& inherited) const override {
        const auto own = axis == Axis::horizontal ? width_ : height_;
        if (!own) return content().flexibility(axis, inherited);
        return *own == unbounded ? Flexibility::stretching : Flexibility::fixed;
    }

  private:
    Proposal inner(const Proposal& outer) const {
        const auto offered = [](std::optional<double> own, std::optional<double> proposed) {
            return own && *own != unbounded ? own : proposed;
        };
        return {offered(width_, outer.width), offered(height_, outer.height)};
    }
    static double side(std::optional<double> own, std::optional<double> proposed, double content) {
        if (!own) return content;
        return *own == unbounded ? proposed.value_or(content) : *own;
    }

    std::optional<double> width_;
    std::optional<double> height_;
    Alignment alignment_;
};

class FixedHeightNode final : public WrapperNode {
  public:
    using WrapperNode::WrapperNode;
    Extent measure(const Proposal& proposal, const Inherited& inherited) const override {
        return content().measure({proposal.width, std::nullopt}, inherited);
    }
    Flexibility flexibility(Axis axis, const Inherited& inherited) const override {
        return axis == Axis::vertical ? Flexibility::fixed : content().flexibility(axis, inherited);
    }
};

class BackgroundNode final : public WrapperNode {
  public:
    BackgroundNode(View content, View behind) : WrapperNode(std::move(content)), behind_(std::move(behind)) {}

    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        auto& layers = out.emplace_back();
        layers.frame = frame;
        if (!behind_.isEmpty()) behind_.node()->place(frame, inherited, layers.children);
        content().place(frame, inherited, layers.children);
    }

  private:
    View behind_;
};

class LabelNode final : public WrapperNode {
  public:
    LabelNode(View content, std::string label) : WrapperNode(std::move(content)), label_(std::move(label)) {}

    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        const std::size_t first = out.size();
        content().place(frame, inherited, out);
        if (out.size() > first && !inherited.isAccessibilityHidden) out[first].label = label_;
    }

  private:
    std::string label_;
};

class LinkNode final : public WrapperNode {
  public:
    LinkNode(View content, std::optional<Url> url) : WrapperNode(std::move(content)), url_(std::move(url)) {}

    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        auto& node = out.emplace_back();
        node.kind = LaidOutNode::Kind::link;
        node.frame = frame;
        node.url = url_;
        content().place(frame, inherited, node.children);
    }

  private:
    std::optional<Url> url_;
};

View inheriting(const View& view, InheritingNode::Change change) {
    return view.isEmpty() ? view : View(std::make_shared<InheritingNode>(view, std::move(change)));
}

template <class Node, class... Arguments>
View wrapped(const View& view, Arguments&&... arguments) {
    if (view.isEmpty()) return view;
    return View(std::make_shared<Node>(view, std::forward<Arguments>(arguments)...));
}

}  // namespace

View View::font(Font font) const {
    return inheriting(*this, [font](Inherited& inherited) { inherited.font = font; });
}

View View::bold() const {
    return inheriting(*this, [](Inherited& inherited) { inherited.font = inherited.font.bold(); });
}

View View::monospacedDigits() const {
    return inheriting(*this,
                      [](Inherited& inherited) { inherited.font = inherited.font.monospacedDigits(); });
}

View View::foreground(Color color) const {
    return inheriting(*this, [color](Inherited& inherited) { inherited.color = color; });
}

View View::lineLimit(int lines) const {
    return inheriting(*this, [lines](Inherited& inherited) { inherited.lineLimit = lines; });
}

View View::minimumScaleFactor(double factor) const {
    return inheriting(*this, [factor](Inherited& inherited) { inherited.minimumScaleFactor = factor; });
}

View View::allowsTightening() const {
    return inheriting(*this, [](Inherited& inherited) { inherited.allowsTightening = true; });
}

View View::multilineTextAlignment(HorizontalAlignment alignment) const {
    return inheriting(*this, [alignment](Inherited& inherited) { inherited.textAlignment = alignment; });
}

View View::startsWithInk() const {
    return inheriting(*this, [](Inherited& inherited) { inherited.startsWithInk = true; });
}

View View::resizable() const {
    return inheriting(*this, [](Inherited& inherited) { inherited.isResizable = true; });
}

View View::opacity(double opacity) const {
    return inheriting(*this, [opacity](Inherited& inherited) { inherited.opacity *= opacity; });
}

View View::accessibilityHidden() const {
    return inheriting(*this, [](Inherited& inherited) { inherited.isAccessibilityHidden = true; });
}

View View::accessibilityLabel(std::string label) const {
    return wrapped<LabelNode>(*this, std::move(label));
}

View View::padding(Insets insets) const {
    return wrapped<PaddingNode>(*this, insets);
}

View View::frame(std::optional<double> width, std::optional<double> height, Alignment alignment) const {
    return wrapped<FrameNode>(*this, width, height, alignment);
}

View View::fillingWidth(HorizontalAlignment alignment) const {
    return frame(unbounded, std::nullopt, {.horizontal = alignment});
}

View View::filling(Alignment alignment) const {
    return frame(unbounded, unbounded, alignment);
}

View View::fixedHeight() const {
    return wrapped<FixedHeightNode>(*this);
}

View View::background(View behind) const {
    return wrapped<BackgroundNode>(*this, std::move(behind));
}

View link(Url target, View content) {
    return wrapped<LinkNode>(content, std::move(target));
}

View inactiveLink(View content) {
    return wrapped<LinkNode>(content, std::nullopt);
}

}  // namespace platform
