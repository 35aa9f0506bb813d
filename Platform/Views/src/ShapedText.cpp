#include "ShapedText.h"

#include "InterfaceFont.h"
#include "WorkCounters.h"

#include <TimeAndText/Text.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <unordered_map>

namespace platform {

namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
struct FreeDescription {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};
struct FreeMetrics {
    void operator()(PangoFontMetrics* metrics) const { pango_font_metrics_unref(metrics); }
};

double points(int pangoUnits) {
    return static_cast<double>(pangoUnits) / PANGO_SCALE;
}

std::unique_ptr<PangoFontDescription, FreeDescription> descriptionOf(const Font& font) {
    std::unique_ptr<PangoFontDescription, FreeDescription> description(pango_font_description_new());
    pango_font_description_set_family(description.get(), interfaceFontFamily().c_str());
    pango_font_description_set_absolute_size(description.get(), font.size * PANGO_SCALE);
    pango_font_description_set_weight(description.get(),
                                      font.isBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    return description;
}

struct RequestHash {
    std::size_t operator()(const TextRequest& request) const {
        std::size_t hash = std::hash<std::string>{}(request.text);
        const auto mix = [&hash](std::size_t value) {
            hash ^= value + 0x9e3779b97f4a7c15U + (hash << 6) + (hash >> 2);
        };
        mix(std::hash<double>{}(request.font.size));
        mix(std::hash<double>{}(request.width));
        mix(std::hash<double>{}(request.tightening));
        mix(static_cast<std::size_t>(request.lineLimit) * 8 + (request.font.isBold ? 4U : 0U) +
            (request.font.hasMonospacedDigits ? 2U : 0U) + (request.isRightToLeft ? 1U : 0U));
        return hash;
    }
};

struct FontMeasures {
    Font font;
    double baseline = 0;
    std::optional<double> bearingOfZero;
};

/// One thread's fonts and the texts that it shaped. Pango's objects may not be shared by threads.
class TextWorkshop {
  public:
    TextWorkshop() : fontMap_(pango_cairo_font_map_new()) {
        // 72 dots per inch: one point of a font is one unit of the surface.
        pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(fontMap_.get()), 72);
        leftToRight_ = makeContext(PANGO_DIRECTION_LTR);
        rightToLeft_ = makeContext(PANGO_DIRECTION_RTL);
    }

    std::shared_ptr<const ShapedText> shape(const TextRequest& request) {
        forgetOnFamilyChange();
        if (const auto found = texts_.find(request); found != texts_.end()) return found->second;
        // A widget needs some forty; a clock in the last minute adds one a second. With its pixels a text
        // takes some five kilobytes.
        constexpr std::size_t limit = 512;
        if (texts_.size() >= limit) texts_.clear();
        auto text = std::make_shared<const ShapedText>(
            (request.isRightToLeft ? rightToLeft_ : leftToRight_).get(), request);
        texts_.emplace(request, text);
        return text;
    }

    FontMeasures& measures(const Font& font) {
        forgetOnFamilyChange();
        const auto found = std::find_if(measures_.begin(), measures_.end(),
                                        [&](const FontMeasures& known) { return known.font == font; });
        if (found != measures_.end()) return *found;
        const auto description = descriptionOf(font);
        const std::unique_ptr<PangoFontMetrics, FreeMetrics> metrics(
            pango_context_get_metrics(leftToRight_.get(), description.get(), nullptr));
        const double ascent = points(pango_font_metrics_get_ascent(metrics.get()));
        const double descent = points(pango_font_metrics_get_descent(metrics.get()));
        const double baseline = (font.lineHeight() - ascent - descent) / 2 + ascent;
        return measures_.emplace_back(FontMeasures{font, baseline, std::nullopt});
    }

    PangoContext* context() const { return leftToRight_.get(); }

  private:
    std::unique_ptr<PangoContext, Unref> makeContext(PangoDirection direction) const {
        std::unique_ptr<PangoContext, Unref> context(pango_font_map_create_context(fontMap_.get()));
        cairo_font_options_t* options = cairo_font_options_create();
        cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
        cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
        pango_cairo_context_set_font_options(context.get(), options);
        cairo_font_options_destroy(options);
        // Widths stay linear in the size, which lets a shrunk text be drawn without shaping it again.
        pango_context_set_round_glyph_positions(context.get(), FALSE);
        pango_context_set_base_dir(context.get(), direction);
        return context;
    }

    void forgetOnFamilyChange() {
        const auto generation = interfaceFontGeneration();
        if (generation == generation_) return;
        generation_ = generation;
        texts_.clear();
        measures_.clear();
    }

    std::unique_ptr<PangoFontMap, Unref> fontMap_;
    std::unique_ptr<PangoContext, Unref> leftToRight_;
    std::unique_ptr<PangoContext, Unref> rightToLeft_;
    std::uint64_t generation_ = 0;
    std::unordered_map<TextRequest, std::shared_ptr<const ShapedText>, RequestHash> texts_;
    std::vector<FontMeasures> measures_;
};

TextWorkshop& workshop() {
    thread_local TextWorkshop workshop;
    return workshop;
}

}  // namespace

ShapedText::ShapedText(PangoContext* context, const TextRequest& request)
    : layout_(pango_layout_new(context)) {
    count(workCounters().shapedTexts);
    PangoLayout* layout = layout_.get();
    pango_layout_set_font_description(layout, descriptionOf(request.font).get());
    PangoAttrList* attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_insert_hyphens_new(FALSE));
    if (request.font.hasMonospacedDigits) {
        pango_attr_list_insert(attributes, pango_attr_font_features_new("tnum=1"));
    }
    if (request.tightening > 0) {
        const auto spacing = static_cast<int>(-std::ceil(request.tightening * PANGO_SCALE));
        pango_attr_list_insert(attributes, pango_attr_letter_spacing_new(spacing));
    }
    pango_layout_set_attributes(layout, attributes);
    pango_attr_list_unref(attributes);
    pango_layout_set_text(layout, request.text.data(), static_cast<int>(request.text.size()));
    if (request.width >= 0) {
        pango_layout_set_width(layout, static_cast<int>(std::ceil(request.width * PANGO_SCALE)));
        pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
        if (request.lineLimit > 0) {
            pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_END);
            pango_layout_set_height(layout, -request.lineLimit);
        }
    }
    isTruncated_ = pango_layout_is_ellipsized(layout) != FALSE;
    for (int index = 0; index < pango_layout_get_line_count(layout); ++index) {
        PangoRectangle logical;
        pango_layout_line_get_extents(line(index), nullptr, &logical);
        lineWidths_.push_back(points(logical.width));
        width_ = std::max(width_, lineWidths_.back());
    }
}

PangoLayoutLine* ShapedText::line(int index) const {
    return pango_layout_get_line_readonly(layout_.get(), index);
}

const LineMask* ShapedText::mask(int line, double scale, double phase) const {
    const auto known = std::ranges::find_if(masks_, [&](const KeptMask& kept) {
        return kept.line == line && kept.scale == scale && kept.phase == phase;
    });
    const auto& kept =
        known != masks_.end()
            ? *known
            : masks_.emplace_back(KeptMask{line, scale, phase, lineMask(this->line(line), scale, phase)});
    return kept.mask ? &*kept.mask : nullptr;
}

std::string ShapedText::drawnText() const {
    const std::string_view text = pango_layout_get_text(layout_.get());
    std::string drawn;
    for (int index = 0; index < lineCount(); ++index) {
        const PangoLayoutLine* drawnLine = line(index);
        auto from = static_cast<std::size_t>(drawnLine->start_index);
        std::size_t to = from + static_cast<std::size_t>(drawnLine->length);
        bool isCut = false;
        for (const GSList* run = drawnLine->runs; run; run = run->next) {
            const PangoItem* item = static_cast<const PangoLayoutRun*>(run->data)->item;
            if ((item->analysis.flags & PANGO_ANALYSIS_FLAG_IS_ELLIPSIS) == 0) continue;
            to = static_cast<std::size_t>(item->offset);
            isCut = true;
        }
        drawn += text.substr(from, to - from);
        if (isCut) drawn += "…";
    }
    return drawn;
}

int ShapedText::gapCount() const {
    int count = 0;
    const PangoLogAttr* places = pango_layout_get_log_attrs_readonly(layout_.get(), &count);
    const auto letters = std::count_if(places, places + std::max(0, count - 1),
                                       [](const PangoLogAttr& place) { return place.is_cursor_position; });
    return std::max(0, static_cast<int>(letters) - 1);
}

std::shared_ptr<const ShapedText> shapedText(const TextRequest& request) {
    return workshop().shape(request);
}

double baselineInLineBox(const Font& font) {
    return workshop().measures(font).baseline;
}

double leadingBearingOfZero(const Font& font) {
    auto& measures = workshop().measures(font);
    if (!measures.bearingOfZero) {
        const ShapedText zero(workshop().context(), {.text = "0", .font = font});
        PangoRectangle ink;
        pango_layout_line_get_extents(zero.line(0), &ink, nullptr);
        measures.bearingOfZero = points(ink.x);
    }
    return *measures.bearingOfZero;
}

bool hasJoiningLetters(const std::string& text) {
    for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
        switch (g_unichar_get_script(g_utf8_get_char(at))) {
            case G_UNICODE_SCRIPT_ADLAM:
            case G_UNICODE_SCRIPT_ARABIC:
            case G_UNICODE_SCRIPT_MANDAIC:
            case G_UNICODE_SCRIPT_MONGOLIAN:
            case G_UNICODE_SCRIPT_NKO:
            case G_UNICODE_SCRIPT_SYRIAC:
                return true;
            default:
                break;
        }
    }
    return false;
}

std::string displayableText(std::string_view text) {
    std::string clean = sanitizedUtf8(text);
    std::string result;
    result.reserve(clean.size());
    // A run of breaks ("\r\n", empty lines) is one blank.
    const auto addBlank = [&result] {
        if (!result.ends_with(' ')) result += ' ';
    };
    for (std::size_t i = 0; i < clean.size(); ++i) {
        const auto byte = static_cast<unsigned char>(clean[i]);
        const auto follows = [&](std::string_view bytes) {
            return clean.compare(i + 1, bytes.size(), bytes) == 0;
        };
        if (byte < 0x20 || byte == 0x7F) {
            addBlank();
        } else if (byte == 0xC2 && i + 1 < clean.size() && static_cast<unsigned char>(clean[i + 1]) < 0xA0) {
            addBlank();  // U+0080 to U+009F
            i += 1;
        } else if (byte == 0xE2 && (follows("\x80\xA8") || follows("\x80\xA9"))) {
            addBlank();  // line and paragraph separator
            i += 2;
        } else {
            result += clean[i];
        }
    }
    return result;
}

}  // namespace platform
