#pragma once

#include "LineMask.h"

#include <Views/Font.h>

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <pango/pangocairo.h>

namespace platform {

/// What text is shaped for; two equal requests share one result in a thread.
struct TextRequest {
    std::string text;
    Font font;
    /// Points; negative: no limit.
    double width = -1;
    /// 0: as many as it takes.
    int lineLimit = 0;
    /// Points taken from the space between two letters.
    double tightening = 0;
    bool isRightToLeft = false;

    friend bool operator==(const TextRequest&, const TextRequest&) = default;
};

/// A text broken into lines by Pango. Belongs to the thread that shaped it.
class ShapedText {
  public:
    ShapedText(PangoContext* context, const TextRequest& request);

    /// Of the widest line.
    double width() const { return width_; }
    int lineCount() const { return static_cast<int>(lineWidths_.size()); }
    double lineWidth(int line) const { return lineWidths_[static_cast<std::size_t>(line)]; }
    bool isTruncated() const { return isTruncated_; }
    /// With "…" where it was cut off.
    std::string drawnText() const;
    /// How many letters have another after them.
    int gapCount() const;
    PangoLayoutLine* line(int index) const;
    /// In device pixels, drawn once per scale and phase; nothing for a line without ink or with coloured
    /// glyphs.
    const LineMask* mask(int line, double scale, double phase) const;

  private:
    struct KeptMask {
        int line = 0;
        double scale = 1;
        double phase = 0;
        std::optional<LineMask> mask;
    };
    struct Unref {
        void operator()(PangoLayout* layout) const { g_object_unref(layout); }
    };
    std::unique_ptr<PangoLayout, Unref> layout_;
    std::vector<double> lineWidths_;
    double width_ = 0;
    bool isTruncated_ = false;
    // A deque, so that what was handed out stays where it is.
    mutable std::deque<KeptMask> masks_;
};

/// From the thread's cache or newly shaped.
std::shared_ptr<const ShapedText> shapedText(const TextRequest& request);

/// Distance of the baseline from the top of the font's line box, by the metrics of the interface font, so
/// that fallback fonts never move a line.
double baselineInLineBox(const Font& font);
/// Blank between the origin and the ink of "0".
double leadingBearingOfZero(const Font& font);

/// True for scripts written without a gap between letters, which spacing would tear or overlap.
bool hasJoiningLetters(const std::string& text);

/// Bad UTF-8 replaced; line breaks, tabs and control characters turned into blanks.
std::string displayableText(std::string_view text);

}  // namespace platform
