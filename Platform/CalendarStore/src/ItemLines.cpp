#include "ItemLines.h"

#include <algorithm>
#include <cstddef>

namespace platform {
ItemLines::ItemLines(std::string_view text) {
    // The text is one component with alarms in it: depth 1 is the item, 2 an alarm, 3 an alarm's own alarm.
    std::size_t depth = 0;
    for (std::size_t from = 0; from < text.size();) {
        const auto end = std::min(text.find('\n', from), text.size());
        auto line = ContentLine::parse(text.substr(from, end - from));
        from = end + 1;
        if (!line) continue;
        if (line->is("BEGIN")) {
            if (++depth == 2) alarms.emplace_back();
        } else if (line->is("END")) {
            --depth;
        } else if (line->value = trimmedAscii(line->value); !line->value.empty() && depth <= 2) {
            (depth == 2 ? alarms.back() : own).push_back(*line);
        }
    }
}

const ContentLine* firstNamed(const std::vector<ContentLine>& lines, std::string_view upperName) {
    const auto found =
        std::find_if(lines.begin(), lines.end(), [&](const ContentLine& line) { return line.is(upperName); });
    return found == lines.end() ? nullptr : &*found;
}

}  // namespace platform
