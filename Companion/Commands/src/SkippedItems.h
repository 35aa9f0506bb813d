#pragma once

#include <System/Diagnostics.h>

#include <string>
#include <vector>

namespace hbr {

/// An event or task that stands in a calendar file and could not be read.
struct SkippedItem {
    platform::Diagnostic diagnostic;
    /// As far as the file tells it.
    std::string title;
};

/// The items that the diagnostics tell of as left out, with the titles that their files give them.
std::vector<SkippedItem> skippedItems(const std::vector<platform::Diagnostic>& diagnostics);

/// Those whose title or identifier contains the text, letter case ignored.
std::vector<SkippedItem> skippedItemsNamed(const std::vector<SkippedItem>& items, const std::string& wanted);

}  // namespace hbr
