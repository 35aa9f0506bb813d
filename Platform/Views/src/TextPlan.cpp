#include "TextPlan.h"

#include <algorithm>

namespace platform {

namespace {

/// Of the font's size; beyond it letters begin to touch.
constexpr double mostTightening = 0.03;

/// The begin of a text that may have no more than `lineLimit` lines: shaping a whole novel to show a line of
/// it would take a second.
std::string visiblePart(const std::string& text, int lineLimit) {
    constexpr std::size_t mostBytesOfALine = 2000;
    const std::size_t most = mostBytesOfALine * static_cast<std::size_t>(lineLimit);
    if (lineLimit <= 0 || text.size() <= most) return text;
    const char* cut = g_utf8_find_prev_char(text.data(), text.data() + most + 1);
    return text.substr(0, static_cast<std::size_t>(cut - text.data()));
}

}  // namespace

TextPlan planText(const std::string& text, const TextRules& rules, std::optional<double> offered) {
    // Sums of widths come back a rounding error short.
    constexpr double tolerance = 0.01;
    const TextRequest natural{
        .text = visiblePart(text, rules.lineLimit), .font = rules.font, .isRightToLeft = rules.isRightToLeft};
    auto shaped = shapedText(natural);
    const double full = shaped->width();
    if (!offered || full <= *offered + tolerance) return {std::move(shaped), full, 1};

    const double available = std::max(0.0, *offered);
    TextRequest request = natural;
    if (rules.allowsTightening && shaped->gapCount() > 0 && !hasJoiningLetters(text)) {
        const double missing = (full - available) / shaped->gapCount();
        request.tightening = std::min(missing, rules.font.size * mostTightening);
        shaped = shapedText(request);
        if (shaped->width() <= available + tolerance) return {std::move(shaped), available, 1};
    }
    const double smallest = rules.minimumScaleFactor;
    if (smallest < 1 && shaped->width() * smallest <= available + tolerance) {
        const double scale = available / shaped->width();
        return {std::move(shaped), available, scale};
    }
    TextRequest broken = request;
    broken.width = available / smallest;
    broken.lineLimit = smallest < 1 ? 1 : rules.lineLimit;
    return {shapedText(broken), available, smallest};
}

}  // namespace platform
