#pragma once

#include "ShapedText.h"

#include <optional>
#include <string>

namespace platform {

/// How a text fits into the width it is offered.
struct TextPlan {
    std::shared_ptr<const ShapedText> shaped;
    double width = 0;
    /// Below 1 where the text is drawn smaller to fit.
    double scale = 1;
};

struct TextRules {
    Font font;
    int lineLimit = 0;
    double minimumScaleFactor = 1;
    bool allowsTightening = false;
    bool isRightToLeft = false;
};

/// The natural width when it fits or nothing is offered. Else, to exactly the width offered: tightened, then
/// shrunk to one line, where each is allowed, or broken and truncated.
TextPlan planText(const std::string& text, const TextRules& rules, std::optional<double> offered);

}  // namespace platform
