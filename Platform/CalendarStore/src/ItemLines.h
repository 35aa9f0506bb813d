#pragma once

#include <CalendarFiles/ContentLine.h>

#include <string_view>
#include <vector>

namespace platform {

/// The lines of an item's text, in its order, their values without blanks at either end. Lines without a
/// value are skipped, so that a later line of the same name is used. Points into the text.
struct ItemLines {
    explicit ItemLines(std::string_view text);

    /// Of the item itself.
    std::vector<ContentLine> own;
    /// One list for each VALARM.
    std::vector<std::vector<ContentLine>> alarms;
};

/// The first line of that name (in upper case), or null.
const ContentLine* firstNamed(const std::vector<ContentLine>& lines, std::string_view upperName);

}  // namespace platform
