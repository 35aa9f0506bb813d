#pragma once

#include <Desktop/Outputs.h>
#include <Desktop/WidgetDesk.h>
#include <Desktop/WidgetWindow.h>
#include <gtk/gtk.h>

#include <optional>
#include <vector>

namespace platform {

struct WidgetMenuModel {
    const WidgetIdentity& identity;
    WidgetFamily family;
    const WidgetPlacement& placement;
    const WidgetActions& actions;
    const WidgetMenuTexts& texts;
    std::vector<Output> outputs;
    bool canPlace = false;
    /// Under the pointer or with the keyboard.
    std::optional<Url> target;
};

/// The context menu of a widget: what the target offers, sizes, corners, screens, gallery, removal, what the
/// program offers.
GtkWidget* makeWidgetMenu(const WidgetMenuModel& model);

}  // namespace platform
