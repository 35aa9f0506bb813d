#include "TreePainter.h"

#include "LineMask.h"
#include "PhotoDrawing.h"
#include "PictureState.h"
#include "RoundedShapes.h"
#include "TextPlan.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace platform {

namespace {

/// Keeps the transformation, clip and source of a drawing as they were.
class SavedState {
  public:
    explicit SavedState(cairo_t* cairo) : cairo_(cairo) { cairo_save(cairo); }
    ~SavedState() { cairo_restore(cairo_); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

  private:
    cairo_t* cairo_;
};

std::uint32_t rgb(Color color) {
    const auto part = [](double value) { return static_cast<std::uint32_t>(std::lround(value * 255)); };
    return (part(color.red) << 16) | (part(color.green) << 8) | part(color.blue);
}

class Painter {
  public:
    Painter(cairo_t* cairo, const LaidOutTree& tree, const PaintRules& rules)
        : cairo_(cairo), tree_(tree), rules_(rules) {}

    void paint(const LaidOutNode& node) {
        switch (node.kind) {
            case LaidOutNode::Kind::text:
            case LaidOutNode::Kind::timer:
                paintText(node);
                break;
            case LaidOutNode::Kind::symbol:
                paintSymbol(node);
                break;
            case LaidOutNode::Kind::picture:
                paintPicture(node);
                break;
            case LaidOutNode::Kind::photo:
                paintPhoto(node);
                break;
            case LaidOutNode::Kind::shape:
                paintShape(node);
                break;
            case LaidOutNode::Kind::progress:
                paintProgress(node);
                break;
            default:
                break;
        }
        for (const auto& child : node.children)
            paint(child);
    }

  private:
    double snapped(double value) const {
        return rules_.isVector ? value : std::round(value * rules_.scale) / rules_.scale;
    }
    Rect snapped(Rect rect) const {
        const double x = snapped(rect.x), y = snapped(rect.y);
        return {x, y, snapped(rect.right()) - x, snapped(rect.bottom()) - y};
    }

    void setSource(const LaidOutNode& node) const {
        const Color color = node.color.value_or(Color{});
        cairo_set_source_rgba(cairo_, color.red, color.green, color.blue, color.alpha * node.opacity);
    }

    void paintText(const LaidOutNode& node) const {
        if (node.text.empty()) return;
        const auto plan = planText(
            node.text,
            {node.font, node.lineLimit, node.minimumScaleFactor, node.allowsTightening, tree_.isRightToLeft},
            node.frame.width);
        setSource(node);
        const double lineHeight = node.font.lineHeight();
        double baseline = node.frame.y + baselineInLineBox(node.font);
        for (int line = 0; line < plan.shaped->lineCount(); ++line, baseline += lineHeight)
            paintLine(plan, line, {lineStart(node, plan, line), snapped(baseline)});
    }

    void paintLine(const TextPlan& plan, int line, Point origin) const {
        const SavedState saved(cairo_);
        // Quarters of a pixel are as exact as an eye can see.
        constexpr double steps = 4;
        const double x = std::round(origin.x * rules_.scale * steps) / steps;
        const double wholeX = std::floor(x), wholeY = std::round(origin.y * rules_.scale);
        const LineMask* mask =
            rules_.isVector ? nullptr : plan.shaped->mask(line, rules_.scale * plan.scale, x - wholeX);
        if (!mask) {
            cairo_translate(cairo_, origin.x, origin.y);
            cairo_scale(cairo_, plan.scale, plan.scale);
            paintGlyphs(cairo_, plan.shaped->line(line), rules_.isVector);
            return;
        }
        cairo_scale(cairo_, 1 / rules_.scale, 1 / rules_.scale);
        cairo_surface_t* surface = surfaceOf(mask->raster, CAIRO_FORMAT_A8);
        cairo_mask_surface(cairo_, surface, wholeX + mask->x, wholeY + mask->y);
        cairo_surface_finish(surface);
        cairo_surface_destroy(surface);
    }

    double lineStart(const LaidOutNode& node, const TextPlan& plan, int line) const {
        const double length = plan.shaped->lineWidth(line) * plan.scale;
        const double offset = alignedTo(node.textAlignment, length, node.frame.width);
        const double bearing = node.startsWithInk ? leadingBearingOfZero(node.font) * plan.scale : 0;
        if (!tree_.isRightToLeft) return node.frame.x + offset - bearing;
        return node.frame.right() - offset - length + bearing;
    }

    static double alignedTo(HorizontalAlignment alignment, double inner, double outer) {
        if (alignment == HorizontalAlignment::leading) return 0;
        return alignment == HorizontalAlignment::center ? (outer - inner) / 2 : outer - inner;
    }

    /// Only good as a source, and as long as the raster is.
    static cairo_surface_t* surfaceOf(const Raster& raster, cairo_format_t format) {
        // Cairo wants writable memory but only reads a source.
        auto* pixels = const_cast<std::uint8_t*>(raster.pixels.data());
        return cairo_image_surface_create_for_data(pixels, format, raster.width, raster.height,
                                                   raster.stride);
    }

    /// The frame in whole device pixels, and the file's raster for it.
    template <class Draw>
    void paintRaster(const LaidOutNode& node, const std::shared_ptr<const Raster>& raster,
                     cairo_format_t format, const Draw& draw) const {
        if (!raster) return;
        const SavedState saved(cairo_);
        cairo_translate(cairo_, snapped(node.frame.x), snapped(node.frame.y));
        cairo_scale(cairo_, 1 / rules_.scale, 1 / rules_.scale);
        cairo_surface_t* surface = surfaceOf(*raster, format);
        draw(surface);
        cairo_surface_finish(surface);
        cairo_surface_destroy(surface);
    }

    int devicePixels(double length) const { return static_cast<int>(std::lround(length * rules_.scale)); }

    void paintSymbol(const LaidOutNode& node) const {
        if (!tree_.pictures) return;
        auto& library = tree_.pictures->state();
        const auto path = picturePath("symbols", node.text);
        if (rules_.isVector) {
            const SavedState saved(cairo_);
            cairo_push_group_with_content(cairo_, CAIRO_CONTENT_ALPHA);
            cairo_translate(cairo_, node.frame.x, node.frame.y);
            library.draw(cairo_, path, node.frame.width, node.frame.height, std::nullopt);
            cairo_pattern_t* mask = cairo_pop_group(cairo_);
            setSource(node);
            cairo_mask(cairo_, mask);
            cairo_pattern_destroy(mask);
            return;
        }
        const auto raster =
            library.mask(path, devicePixels(node.frame.width), devicePixels(node.frame.height));
        paintRaster(node, raster, CAIRO_FORMAT_A8, [&](cairo_surface_t* surface) {
            setSource(node);
            cairo_mask_surface(cairo_, surface, 0, 0);
        });
    }

    void paintPicture(const LaidOutNode& node) const {
        if (!tree_.pictures) return;
        auto& library = tree_.pictures->state();
        const auto path = picturePath("pictures", node.text);
        const Color ink = node.color.value_or(Color{});
        const PictureInks inks = {rgb(ink), rgb(node.accent.value_or(ink))};
        const double opacity = ink.alpha * node.opacity;
        if (rules_.isVector) {
            const SavedState saved(cairo_);
            cairo_push_group(cairo_);
            cairo_translate(cairo_, node.frame.x, node.frame.y);
            library.draw(cairo_, path, node.frame.width, node.frame.height, inks);
            cairo_pop_group_to_source(cairo_);
            cairo_paint_with_alpha(cairo_, opacity);
            return;
        }
        const auto raster =
            library.image(path, devicePixels(node.frame.width), devicePixels(node.frame.height), inks);
        paintRaster(node, raster, CAIRO_FORMAT_ARGB32, [&](cairo_surface_t* surface) {
            cairo_set_source_surface(cairo_, surface, 0, 0);
            cairo_paint_with_alpha(cairo_, opacity);
        });
    }

    void paintPhoto(const LaidOutNode& node) const {
        if (!node.image) return;
        const Rect rect = snapped(node.frame);
        const SavedState saved(cairo_);
        addRounded(cairo_, rect, node.cornerRadius);
        if (rules_.isVector) {
            cairo_clip(cairo_);
            cairo_translate(cairo_, rect.x, rect.y);
            drawPhoto(cairo_, *node.image, rect.width, rect.height, node.opacity);
            return;
        }
        const auto raster = photoRaster(*node.image, devicePixels(rect.width), devicePixels(rect.height));
        if (!raster) return;
        // As a fill, whose edge is smoothed, not as a clip.
        cairo_surface_t* surface = surfaceOf(*raster, CAIRO_FORMAT_ARGB32);
        cairo_surface_set_device_scale(surface, rules_.scale, rules_.scale);
        if (node.opacity < 1) cairo_push_group(cairo_);
        cairo_set_source_surface(cairo_, surface, rect.x, rect.y);
        cairo_fill(cairo_);
        if (node.opacity < 1) {
            cairo_pop_group_to_source(cairo_);
            cairo_paint_with_alpha(cairo_, node.opacity);
        }
        cairo_surface_finish(surface);
        cairo_surface_destroy(surface);
    }

    void paintShape(const LaidOutNode& node) const {
        setSource(node);
        const RoundedShape rounded{snapped(node.frame), node.cornerRadius,
                                   rules_.isVector ? 0 : rules_.scale};
        if (node.isHairline) {
            strokeRounded(cairo_, rounded, 1 / rules_.scale);
        } else {
            fillRounded(cairo_, rounded);
        }
    }

    void paintProgress(const LaidOutNode& node) const {
        constexpr double lineWidth = 2.5;
        constexpr double trackOpacity = 0.25;
        const Rect rect = snapped(node.frame);
        const double x = rect.x + rect.width / 2, y = rect.y + rect.height / 2;
        const double radius = std::max(0.0, std::min(rect.width, rect.height) / 2 - lineWidth / 2);
        const Color color = node.color.value_or(Color{});
        cairo_set_line_width(cairo_, lineWidth);
        cairo_set_source_rgba(cairo_, color.red, color.green, color.blue,
                              color.alpha * node.opacity * trackOpacity);
        cairo_new_path(cairo_);
        cairo_arc(cairo_, x, y, radius, 0, 2 * std::numbers::pi);
        cairo_stroke(cairo_);
        if (node.fraction <= 0) return;
        setSource(node);
        const double start = -std::numbers::pi / 2;
        cairo_arc(cairo_, x, y, radius, start, start + node.fraction * 2 * std::numbers::pi);
        cairo_stroke(cairo_);
    }

    cairo_t* cairo_;
    const LaidOutTree& tree_;
    const PaintRules& rules_;
};

}  // namespace

void paintTree(cairo_t* cairo, const LaidOutTree& tree, const PaintRules& rules) {
    Painter(cairo, tree, rules).paint(tree.root);
}

}  // namespace platform
