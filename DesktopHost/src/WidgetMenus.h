#pragma once

#include <Desktop/CardWindow.h>
#include <Desktop/MenuItem.h>
#include <Desktop/WidgetDesk.h>
#include <HbrCore/CoreServices.h>
#include <WidgetHost/WidgetBundle.h>

#include <functional>
#include <vector>

namespace hbr {

/// The words of the menu that every widget has.
platform::WidgetMenuTexts widgetMenuTexts(const platform::WidgetBundle& bundle);

/// What a row's menu offers of its event: the card itself, then what the card's buttons do.
std::vector<platform::MenuItem> eventMenu(const platform::WidgetBundle& bundle, const platform::Card& card,
                                          std::function<void()> showCard);

/// What every widget's menu ends with: the settings that matter most on the desktop, and quitting. The
/// settings are changed through the core, as from everywhere else.
std::vector<platform::MenuItem> programMenu(const platform::WidgetBundle& bundle, CoreServices& core,
                                            std::function<void()> quit);

}  // namespace hbr
