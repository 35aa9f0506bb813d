#include "TextPlan.h"

#include <algorithm>

namespace platform {

TextPlan planText(const std::string& text, const TextRules& rules, std::optional<double> offered) {
    // Sums of widths come back a rounding error short.
    constexpr double tolerance = 0.01;
    const TextRequest natural{.text = text, .font = rules.font, .isRightToLeft = rules.isRightToLeft};
    auto shaped = shapedText(natural);
    const double full = shaped->width();
    if (!offered || full <= *offered + tolerance) return {std::move(shaped), full, 1};

    const double available = std::max(0.0, *offered);
    const double smallest = rules.minimumScaleFactor;
    if (smallest < 1 && full * smallest <= available + tolerance) {
        return {std::move(shaped), available, available / full};
    }
    TextRequest broken = natural;
    broken.width = available / smallest;
    broken.lineLimit = smallest < 1 ? 1 : rules.lineLimit;
    return {shapedText(broken), available, smallest};
}

}  // namespace platform
