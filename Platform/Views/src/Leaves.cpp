#include "ShapedText.h"
#include "ViewNode.h"

#include <algorithm>

namespace platform {

namespace {

class ShapeNode final : public ViewNode {
  public:
    explicit ShapeNode(ShapeOptions options) : options_(options) {}

    Extent measure(const Proposal& proposal, const Inherited&) const override {
        constexpr double ideal = 10;
        return Extent::of({proposal.width.value_or(ideal), proposal.height.value_or(ideal)});
    }
    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        auto& node = out.emplace_back();
        node.kind = LaidOutNode::Kind::shape;
        node.frame = frame;
        node.cornerRadius = std::min({options_.cornerRadius, frame.width / 2, frame.height / 2});
        node.isHairline = options_.isHairline;
        node.color = inherited.color;
        node.opacity = inherited.opacity;
        node.isAccessibilityHidden = true;
    }
    Flexibility flexibility(Axis, const Inherited&) const override { return Flexibility::stretching; }

  private:
    ShapeOptions options_;
};

/// Drawn from a file. Its own size is the file's at font size 11 and grows with the font.
class FileNode : public ViewNode {
  public:
    FileNode(LaidOutNode::Kind kind, std::string folder, std::string name)
        : kind_(kind), folder_(std::move(folder)), name_(std::move(name)) {}

    Extent measure(const Proposal& proposal, const Inherited& inherited) const override {
        Size size = idealSize(inherited);
        if (!inherited.isResizable) return baselined(size, inherited);
        const double factor = std::min(proposal.width.value_or(unbounded) / size.width,
                                       proposal.height.value_or(unbounded) / size.height);
        if (factor != unbounded) size = {size.width * factor, size.height * factor};
        return baselined(size, inherited);
    }
    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        auto& node = out.emplace_back();
        node.kind = kind_;
        node.frame = frame;
        node.text = name_;
        node.color = inherited.color;
        node.opacity = inherited.opacity;
        node.isAccessibilityHidden = inherited.isAccessibilityHidden;
        finish(node);
    }
    Flexibility flexibility(Axis, const Inherited& inherited) const override {
        return inherited.isResizable ? Flexibility::stretching : Flexibility::fixed;
    }

  protected:
    virtual void finish(LaidOutNode&) const {}
    virtual double sizeFactor(const Inherited&) const { return 1; }
    virtual Extent baselined(Size size, const Inherited&) const { return Extent::of(size); }

  private:
    Size idealSize(const Inherited& inherited) const {
        const auto& pictures = inherited.context->pictures;
        const Size own = pictures ? pictures->intrinsicSize(folder_, name_) : Size{18, 18};
        const double factor = sizeFactor(inherited);
        return {own.width * factor, own.height * factor};
    }

    LaidOutNode::Kind kind_;
    std::string folder_;
    std::string name_;
};

class SymbolNode final : public FileNode {
  public:
    explicit SymbolNode(std::string name) : FileNode(LaidOutNode::Kind::symbol, "symbols", std::move(name)) {}

  protected:
    double sizeFactor(const Inherited& inherited) const override { return inherited.font.size / 11; }
    /// Beside text the middle of a symbol is that of the line, so that a symbol of the line's height adds
    /// nothing to it.
    Extent baselined(Size size, const Inherited& inherited) const override {
        const double middleToBaseline = baselineInLineBox(inherited.font) - inherited.font.lineHeight() / 2;
        const double baseline = size.height / 2 + middleToBaseline;
        return {size, baseline, baseline};
    }
};

class PictureNode final : public FileNode {
  public:
    PictureNode(std::string name, Color accent)
        : FileNode(LaidOutNode::Kind::picture, "pictures", std::move(name)), accent_(accent) {}

  protected:
    void finish(LaidOutNode& node) const override { node.accent = accent_; }

  private:
    Color accent_;
};

class PhotoNode final : public ViewNode {
  public:
    PhotoNode(ImageBytes image, double cornerRadius)
        : image_(std::move(image)), cornerRadius_(cornerRadius) {}

    Extent measure(const Proposal& proposal, const Inherited&) const override {
        constexpr double ideal = 32;
        return Extent::of({proposal.width.value_or(ideal), proposal.height.value_or(ideal)});
    }
    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        auto& node = out.emplace_back();
        node.kind = LaidOutNode::Kind::photo;
        node.frame = frame;
        node.image = image_;
        node.cornerRadius = std::min({cornerRadius_, frame.width / 2, frame.height / 2});
        node.opacity = inherited.opacity;
        node.isAccessibilityHidden = inherited.isAccessibilityHidden;
    }
    Flexibility flexibility(Axis, const Inherited&) const override { return Flexibility::stretching; }

  private:
    ImageBytes image_;
    double cornerRadius_;
};

class ProgressNode final : public ViewNode {
  public:
    explicit ProgressNode(double fraction) : fraction_(std::clamp(fraction, 0.0, 1.0)) {}

    Extent measure(const Proposal& proposal, const Inherited&) const override {
        constexpr double ideal = 16;
        const double offered =
            std::min(proposal.width.value_or(unbounded), proposal.height.value_or(unbounded));
        const double side = offered == unbounded ? ideal : offered;
        return Extent::of({side, side});
    }
    void place(Rect frame, const Inherited& inherited, std::vector<LaidOutNode>& out) const override {
        auto& node = out.emplace_back();
        node.kind = LaidOutNode::Kind::progress;
        node.frame = frame;
        node.fraction = fraction_;
        node.color = inherited.color;
        node.opacity = inherited.opacity;
        node.isAccessibilityHidden = inherited.isAccessibilityHidden;
    }
    Flexibility flexibility(Axis, const Inherited&) const override { return Flexibility::stretching; }

  private:
    double fraction_;
};

class SpacerNode final : public ViewNode {
  public:
    explicit SpacerNode(double minimumLength) : minimumLength_(minimumLength) {}

    Extent measure(const Proposal& proposal, const Inherited& inherited) const override {
        const auto length = [&](Axis axis) {
            if (inherited.stackAxis && *inherited.stackAxis != axis) return 0.0;
            return std::max(minimumLength_, proposal.along(axis).value_or(minimumLength_));
        };
        return Extent::of({length(Axis::horizontal), length(Axis::vertical)});
    }
    void place(Rect, const Inherited&, std::vector<LaidOutNode>&) const override {}
    Flexibility flexibility(Axis, const Inherited&) const override { return Flexibility::stretching; }
    bool isSpacer() const override { return true; }
    double minimumLength() const override { return minimumLength_; }

  private:
    double minimumLength_;
};

}  // namespace

View shape(ShapeOptions options) {
    return View(std::make_shared<ShapeNode>(options));
}

View symbol(std::string name) {
    return View(std::make_shared<SymbolNode>(std::move(name)));
}

View picture(std::string name, Color accent) {
    return View(std::make_shared<PictureNode>(std::move(name), accent));
}

View photo(ImageBytes image, double cornerRadius) {
    return View(std::make_shared<PhotoNode>(std::move(image), cornerRadius));
}

View progress(double fraction) {
    return View(std::make_shared<ProgressNode>(fraction));
}

View spacer(double minLength) {
    return View(std::make_shared<SpacerNode>(minLength));
}

}  // namespace platform
