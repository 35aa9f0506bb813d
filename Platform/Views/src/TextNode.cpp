#include "TextPlan.h"
#include "TimerText.h"
#include "ViewNode.h"

namespace platform {

namespace {

class TextNode : public ViewNode {
  public:
    Extent measure(const Proposal& proposal, const Inherited& inherited) const override {
        const auto plan = planText(textAt(inherited), rules(inherited), proposal.width);
        const double line = inherited.font.lineHeight();
        const double height = line * plan.shaped->lineCount();
        const double baseline = baselineInLineBox(inherited.font);
        return {{plan.width, height}, baseline, height - line + baseline, true};
    }

    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        auto content = textAt(inherited);
        const auto plan = planText(content, rules(inherited), frame.width);
        auto& node = out.emplace_back();
        node.kind = LaidOutNode::Kind::text;
        node.frame = frame;
        node.lines = plan.shaped->lineCount();
        node.isTruncated = plan.shaped->isTruncated();
        node.textScale = plan.scale;
        node.minimumScaleFactor = inherited.minimumScaleFactor;
        node.allowsTightening = inherited.allowsTightening;
        if (node.isTruncated) node.truncatedText = plan.shaped->drawnText();
        node.text = std::move(content);
        node.font = inherited.font;
        node.lineLimit = inherited.lineLimit;
        node.textAlignment = inherited.textAlignment;
        node.startsWithInk = inherited.startsWithInk;
        node.color = inherited.color;
        node.opacity = inherited.opacity;
        node.isAccessibilityHidden = inherited.isAccessibilityHidden;
    }

    Flexibility flexibility(Axis axis, const Inherited&) const override {
        return axis == Axis::horizontal ? Flexibility::compressible : Flexibility::fixed;
    }

  protected:
    virtual std::string textAt(const Inherited& inherited) const = 0;

  private:
    static TextRules rules(const Inherited& inherited) {
        return {inherited.font, inherited.lineLimit, inherited.minimumScaleFactor, inherited.allowsTightening,
                inherited.context->isRightToLeft};
    }
};

class FixedTextNode final : public TextNode {
  public:
    explicit FixedTextNode(std::string text) : text_(displayableText(text)) {}

  protected:
    std::string textAt(const Inherited&) const override { return text_; }

  private:
    std::string text_;
};

class TimerNode final : public TextNode {
  public:
    explicit TimerNode(Date target) : target_(target) {}

    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        TextNode::place(frame, inherited, out);
        out.back().kind = LaidOutNode::Kind::timer;
        out.back().timerTarget = target_;
    }

  protected:
    std::string textAt(const Inherited& inherited) const override {
        return timerText(target_, inherited.context->now, inherited.context->locale);
    }

  private:
    Date target_;
};

}  // namespace

View text(std::string text) {
    return View(std::make_shared<FixedTextNode>(std::move(text)));
}

View timer(Date target) {
    return View(std::make_shared<TimerNode>(target));
}

}  // namespace platform
