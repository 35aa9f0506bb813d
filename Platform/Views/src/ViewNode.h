#pragma once

#include "StackDistribution.h"

#include <Views/Font.h>
#include <Views/Geometry.h>
#include <Views/LaidOutTree.h>
#include <Views/View.h>
#include <Views/ViewContext.h>

#include <limits>
#include <optional>
#include <vector>

namespace platform {

inline constexpr double unbounded = std::numeric_limits<double>::infinity();

/// The room offered; an absent side asks for the ideal extent.
struct Proposal {
    std::optional<double> width;
    std::optional<double> height;

    static Proposal of(Size size) { return {size.width, size.height}; }
    std::optional<double> along(Axis axis) const { return axis == Axis::horizontal ? width : height; }
};

/// What a node takes of a proposal. Baselines are distances from its top; a node without text has its
/// bottom there, and is a stack's baseline only where no text is.
struct Extent {
    Size size;
    double firstBaseline = 0;
    double lastBaseline = 0;
    bool hasText = false;

    static Extent of(Size size) { return {size, size.height, size.height}; }
    double along(Axis axis) const { return axis == Axis::horizontal ? size.width : size.height; }
};

class StackPlanCache;

/// What modifiers of outer views hand to the inner ones.
struct Inherited {
    Font font;
    Color color;
    int lineLimit = 0;
    double minimumScaleFactor = 1;
    bool allowsTightening = false;
    HorizontalAlignment textAlignment = HorizontalAlignment::leading;
    bool startsWithInk = false;
    bool isResizable = false;
    double opacity = 1;
    bool isAccessibilityHidden = false;
    /// Of the nearest stack; a spacer stretches along it only.
    std::optional<Axis> stackAxis;
    const ViewContext* context = nullptr;
    StackPlanCache* plans = nullptr;
};

/// One step of a layout: it answers a proposal with what it takes, and adds what it draws in a frame.
/// Immutable; leading is left here, the finished tree is mirrored for languages from the right.
class ViewNode {
  public:
    virtual ~ViewNode() = default;
    virtual Extent measure(const Proposal& proposal, const Inherited& inherited) const = 0;
    virtual void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const = 0;
    virtual Flexibility flexibility(Axis axis, const Inherited& inherited) const = 0;
    /// Spacers are served after everything else and have no spacing beside them.
    virtual bool isSpacer() const { return false; }
    /// What a spacer takes at least.
    virtual double minimumLength() const { return 0; }
};

/// A node around one other; by default as if it were not there.
class WrapperNode : public ViewNode {
  public:
    explicit WrapperNode(View content) : content_(std::move(content)) {}
    Extent measure(const Proposal& proposal, const Inherited& inherited) const override {
        return content().measure(proposal, inherited);
    }
    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        content().place(frame, inherited, out);
    }
    Flexibility flexibility(Axis axis, const Inherited& inherited) const override {
        return content().flexibility(axis, inherited);
    }

  protected:
    const ViewNode& content() const { return *content_.node(); }

  private:
    View content_;
};

/// Offset of something `inner` long inside `outer`.
inline double alignedOffset(HorizontalAlignment alignment, double inner, double outer) {
    if (alignment == HorizontalAlignment::leading) return 0;
    return alignment == HorizontalAlignment::center ? (outer - inner) / 2 : outer - inner;
}

/// Baseline alignments of a single child mean its top.
inline double alignedOffset(VerticalAlignment alignment, double inner, double outer) {
    if (alignment == VerticalAlignment::center) return (outer - inner) / 2;
    return alignment == VerticalAlignment::bottom ? outer - inner : 0;
}

}  // namespace platform
