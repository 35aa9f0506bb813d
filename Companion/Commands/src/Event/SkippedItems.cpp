#include "Event/SkippedItems.h"

#include <TimeAndText/Text.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace hbr {

namespace {

/// The SUMMARY of the item that begins on that line.
std::string titleAt(const platform::Diagnostic& diagnostic) {
    std::ifstream file(diagnostic.file);
    std::string line;
    for (int number = 1; number < *diagnostic.line; ++number) {
        if (!std::getline(file, line)) return {};
    }
    std::string title;
    bool isInTitle = false;
    while (std::getline(file, line)) {
        if (line.ends_with('\r')) line.pop_back();
        const bool continues = line.starts_with(' ') || line.starts_with('\t');
        if (isInTitle && continues) {
            title += line.substr(1);
            continue;
        }
        if (isInTitle || platform::lowercased(line).starts_with("end:v")) break;
        isInTitle =
            platform::lowercased(line.substr(0, 7)) == "summary" && line.find(':') != std::string::npos;
        if (isInTitle) title = line.substr(line.find(':') + 1);
    }
    return platform::sanitizedUtf8(title);
}

}  // namespace

std::vector<SkippedItem> skippedItems(const std::vector<platform::Diagnostic>& diagnostics) {
    std::vector<SkippedItem> items;
    for (const auto& diagnostic : diagnostics) {
        // Diagnostics of whole items end with "left out"; others report a part of an item.
        if (diagnostic.line && diagnostic.text.ends_with("; left out")) {
            items.push_back({diagnostic, titleAt(diagnostic)});
        }
    }
    return items;
}

std::vector<SkippedItem> skippedItemsNamed(const std::vector<SkippedItem>& items, const std::string& wanted) {
    const std::string text = platform::lowercased(platform::trimmed(wanted));
    std::vector<SkippedItem> found;
    std::ranges::copy_if(items, std::back_inserter(found), [&](const SkippedItem& item) {
        return platform::lowercased(item.title).find(text) != std::string::npos ||
               platform::lowercased(item.diagnostic.field).find(text) != std::string::npos;
    });
    return found;
}

}  // namespace hbr
