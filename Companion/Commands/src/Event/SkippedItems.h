#pragma once

#include <System/Diagnostics.h>

#include <string>
#include <vector>

namespace hbr {

/// An event or task in a calendar file that could not be read.
struct SkippedItem {
    platform::Diagnostic diagnostic;
    /// Empty if the file has none.
    std::string title;
};

/// The items that the diagnostics report as left out, with the titles from their files.
std::vector<SkippedItem> skippedItems(const std::vector<platform::Diagnostic>& diagnostics);

/// Those whose title or identifier contains the text, letter case ignored.
std::vector<SkippedItem> skippedItemsNamed(const std::vector<SkippedItem>& items, const std::string& wanted);

}  // namespace hbr
