#include "FileProblems.h"

#include "ItemLimits.h"

#include <TimeAndText/ShortenedText.h>

#include <optional>
#include <utility>

namespace platform {

void FileProblems::report(std::string text, std::string_view field) {
    if (++count_ > limits::problems) return;
    diagnostics_.report({.file = file_,
                         .line = line_ > 0 ? std::optional(line_) : std::nullopt,
                         .field = shortened(field, 200),
                         .text = std::move(text)});
}

void FileProblems::reportRest() {
    if (count_ <= limits::problems) return;
    const auto more = std::to_string(count_ - limits::problems) + " more problems in this file";
    diagnostics_.report({.file = file_, .text = more});
}

std::string counted(std::size_t number, std::string_view unit) {
    auto digits = std::to_string(number);
    for (auto at = static_cast<int>(digits.size()) - 3; at > 0; at -= 3)
        digits.insert(static_cast<std::size_t>(at), ",");
    return digits + " " + std::string(unit);
}

}  // namespace platform
