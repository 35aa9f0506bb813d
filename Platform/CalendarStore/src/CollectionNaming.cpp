#include "CollectionNaming.h"

#include "CssColorNames.h"

namespace platform {
namespace {

std::optional<Color> colorOf(const std::string& text) {
    auto color = Color::parse(text);
    if (!color) color = cssColor(text);
    return color ? std::optional(color->withAlpha(1)) : std::nullopt;
}

}  // namespace

CollectionNaming namingOf(const CalendarCollection& found,
                          const std::vector<std::shared_ptr<const ScannedFile>>& files) {
    CollectionNaming naming{found.title, {}};
    std::optional<std::string> color = found.color;
    if (!files.empty()) {
        if (!naming.title) naming.title = files.front()->calendarName;
        if (!color) color = files.front()->color;
    }
    if (color) naming.color = colorOf(*color);
    return naming;
}

}  // namespace platform
