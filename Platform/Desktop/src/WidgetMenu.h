#pragma once

#include <Desktop/Outputs.h>
#include <Desktop/WidgetDesk.h>
#include <Desktop/WidgetWindow.h>
#include <gtk/gtk.h>

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
};

/// The context menu of a widget: sizes, corners, screens, gallery, removal.
GtkWidget* makeWidgetMenu(const WidgetMenuModel& model);

}  // namespace platform
