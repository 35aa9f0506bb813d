#include "WidgetMenus.h"

#include <HbrLocalization/L10n.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

namespace hbr {

namespace {

using platform::MenuItem;
using Kind = MenuItem::Kind;

std::string menuText(const platform::WidgetBundle& bundle, const char* key) {
    return bundle.localizedText(std::string("Widget.desktop.menu.") + key);
}

MenuItem actionItem(const platform::Card::Choice& choice) {
    return {.label = choice.label, .chosen = choice.chosen};
}

/// Seconds before the start at which an alert may come; the present choice among them.
std::vector<std::int64_t> leads(std::int64_t current) {
    std::vector<std::int64_t> all = {0, 60, 120, 300, 600, 900, 1800};
    if (std::ranges::find(all, current) == all.end()) all.push_back(current);
    std::ranges::sort(all);
    return all;
}

MenuItem leadMenu(const platform::WidgetBundle& bundle, CoreServices& core) {
    MenuItem menu{.kind = Kind::submenu, .label = menuText(bundle, "alertBefore")};
    const std::int64_t current = core.settings().timeOffsetSeconds();
    for (const std::int64_t seconds : leads(current)) {
        const auto length =
            core.formatters().durationFormatterForTimeOffset().string(static_cast<double>(seconds));
        menu.submenu.push_back(
            {.kind = Kind::choice,
             .label = seconds == 0 ? menuText(bundle, "alertAtStart") : length.value_or(""),
             .chosen = [&core, seconds] { core.settings().setTimeOffsetSeconds(seconds); },
             .isMarked = seconds == current});
    }
    return menu;
}

}  // namespace

platform::WidgetMenuTexts widgetMenuTexts(const platform::WidgetBundle& bundle) {
    const auto text = [&](const char* key) { return menuText(bundle, key); };
    return {.size = text("size"),
            .moveTo = text("moveTo"),
            .topStart = text("topStart"),
            .topEnd = text("topEnd"),
            .bottomStart = text("bottomStart"),
            .bottomEnd = text("bottomEnd"),
            .screen = text("screen"),
            .openGallery = text("openGallery"),
            .remove = text("remove"),
            .cannotPlace = text("cannotPlace")};
}

std::vector<MenuItem> eventMenu(const platform::WidgetBundle& bundle, const platform::Card& card,
                                std::function<void()> showCard) {
    std::vector<MenuItem> items = {{.label = menuText(bundle, "details"), .chosen = std::move(showCard)}};
    if (card.primary) items.push_back(actionItem(*card.primary));
    std::ranges::transform(card.buttons, std::back_inserter(items), actionItem);
    if (!card.menu.empty()) {
        MenuItem& menu = items.emplace_back(MenuItem{.kind = Kind::submenu, .label = card.menuLabel});
        std::ranges::transform(card.menu, std::back_inserter(menu.submenu), actionItem);
    }
    if (card.aside) items.push_back(actionItem(*card.aside));
    return items;
}

std::vector<MenuItem> programMenu(const platform::WidgetBundle& bundle, CoreServices& core,
                                  std::function<void()> quit) {
    const bool includes = core.settings().includeTravelTime();
    MenuItem settings{.kind = Kind::submenu, .label = menuText(bundle, "settings")};
    settings.submenu = {leadMenu(bundle, core),
                        {.kind = Kind::toggle,
                         .label = L10n::Preferences::includeTravelTime(*core.environment()),
                         .chosen = [&core, includes] { core.settings().setIncludeTravelTime(!includes); },
                         .isMarked = includes}};
    return {std::move(settings), {.label = L10n::Menu::quit(*core.environment()), .chosen = std::move(quit)}};
}

}  // namespace hbr
