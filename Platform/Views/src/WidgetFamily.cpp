#include <Views/WidgetFamily.h>

namespace platform {

Size sizeOf(WidgetFamily family) {
    switch (family) {
        case WidgetFamily::systemSmall:
            return {170, 170};
        case WidgetFamily::systemMedium:
            return {364, 170};
        case WidgetFamily::systemLarge:
            return {364, 382};
    }
    return {};
}

std::string_view nameOf(WidgetFamily family) {
    switch (family) {
        case WidgetFamily::systemSmall:
            return "small";
        case WidgetFamily::systemMedium:
            return "medium";
        case WidgetFamily::systemLarge:
            return "large";
    }
    return {};
}

std::optional<WidgetFamily> widgetFamily(std::string_view name) {
    for (const auto family :
         {WidgetFamily::systemSmall, WidgetFamily::systemMedium, WidgetFamily::systemLarge}) {
        if (name == nameOf(family)) return family;
    }
    return std::nullopt;
}

}  // namespace platform
