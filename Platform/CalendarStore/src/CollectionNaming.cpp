#include "CssColorNames.h"
#include "StoreLoader.h"

#include <Foundation/ContentLine.h>
#include <Foundation/Files.h>

namespace platform {
namespace {

constexpr std::uintmax_t longestName = 4096;

std::optional<std::string> firstLine(const std::filesystem::path& file) {
    std::error_code error;
    const auto text = readRegularFile(file, error, longestName);
    if (!text) return std::nullopt;
    const auto line = trimmedAscii(std::string_view(*text).substr(0, text->find('\n')));
    return line.empty() ? std::nullopt : std::optional<std::string>(line);
}

std::optional<Color> colorOf(const std::string& text) {
    auto color = Color::parse(text);
    if (!color) color = cssColor(text);
    return color ? std::optional(color->withAlpha(1)) : std::nullopt;
}

}  // namespace

CollectionNaming namingOf(const FoundCollection& found,
                          const std::vector<std::shared_ptr<const ScannedFile>>& files) {
    CollectionNaming naming;
    std::optional<std::string> color;
    if (found.isFolder) {
        naming.title = firstLine(found.location / "displayname");
        color = firstLine(found.location / "color");
    } else if (!files.empty()) {
        naming.title = files.front()->calendarName;
        color = files.front()->color;
    }
    if (color) naming.color = colorOf(*color);
    return naming;
}

}  // namespace platform
