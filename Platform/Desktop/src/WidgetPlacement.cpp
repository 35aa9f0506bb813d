#include <Desktop/WidgetPlacement.h>

#include <array>
#include <utility>

namespace platform {

namespace {

constexpr std::array<std::pair<Corner, std::string_view>, 4> names = {{{Corner::topStart, "top-start"},
                                                                       {Corner::topEnd, "top-end"},
                                                                       {Corner::bottomStart, "bottom-start"},
                                                                       {Corner::bottomEnd, "bottom-end"}}};

}  // namespace

std::string_view nameOf(Corner corner) {
    for (const auto& [each, name] : names) {
        if (each == corner) return name;
    }
    return {};
}

std::optional<Corner> cornerNamed(std::string_view name) {
    for (const auto& [corner, each] : names) {
        if (each == name) return corner;
    }
    return std::nullopt;
}

}  // namespace platform
