#include "WidgetMenu.h"

#include <string>
#include <utility>

#include "ActionSignal.h"

namespace platform {

namespace {

void append(GtkWidget* menu, GtkWidget* item) {
    gtk_widget_show(item);
    gtk_menu_shell_append(GTK_MENU_SHELL(menu), item);
}

void addAction(GtkWidget* menu, const std::string& label, std::function<void()> action) {
    GtkWidget* item = gtk_menu_item_new_with_label(label.c_str());
    onSignal(item, "activate", std::move(action));
    append(menu, item);
}

void addRemark(GtkWidget* menu, const std::string& text) {
    GtkWidget* item = gtk_menu_item_new_with_label(text.c_str());
    gtk_widget_set_sensitive(item, FALSE);
    append(menu, item);
}

/// One of several, drawn with a mark when it is the current one. Choosing that again does nothing.
void addChoice(GtkWidget* menu, const std::string& label, bool isCurrent, std::function<void()> action) {
    GtkWidget* item = gtk_check_menu_item_new_with_label(label.c_str());
    gtk_check_menu_item_set_draw_as_radio(GTK_CHECK_MENU_ITEM(item), TRUE);
    gtk_check_menu_item_set_active(GTK_CHECK_MENU_ITEM(item), isCurrent);
    if (!isCurrent) onSignal(item, "activate", std::move(action));
    append(menu, item);
}

GtkWidget* addSubmenu(GtkWidget* menu, const std::string& label) {
    GtkWidget* item = gtk_menu_item_new_with_label(label.c_str());
    GtkWidget* submenu = gtk_menu_new();
    gtk_menu_item_set_submenu(GTK_MENU_ITEM(item), submenu);
    append(menu, item);
    return submenu;
}

void addToggle(GtkWidget* menu, const MenuItem& item) {
    GtkWidget* toggle = gtk_check_menu_item_new_with_label(item.label.c_str());
    gtk_check_menu_item_set_active(GTK_CHECK_MENU_ITEM(toggle), item.isMarked);
    onSignal(toggle, "activate", item.chosen);
    append(menu, toggle);
}

void addItems(GtkWidget* menu, const std::vector<MenuItem>& items) {
    for (const MenuItem& item : items) {
        switch (item.kind) {
            case MenuItem::Kind::action:
                addAction(menu, item.label, item.chosen);
                break;
            case MenuItem::Kind::choice:
                addChoice(menu, item.label, item.isMarked, item.chosen);
                break;
            case MenuItem::Kind::toggle:
                addToggle(menu, item);
                break;
            case MenuItem::Kind::submenu:
                addItems(addSubmenu(menu, item.label), item.submenu);
                break;
        }
    }
}

void addSizes(GtkWidget* menu, const WidgetMenuModel& model) {
    for (const auto& family : model.identity.families) {
        addChoice(menu, family.name, family.family == model.family,
                  [change = model.actions.changeFamily, family = family.family] { change(family); });
    }
}

void addCorners(GtkWidget* menu, const WidgetMenuModel& model) {
    const std::pair<Corner, const std::string&> corners[] = {{Corner::topStart, model.texts.topStart},
                                                             {Corner::topEnd, model.texts.topEnd},
                                                             {Corner::bottomStart, model.texts.bottomStart},
                                                             {Corner::bottomEnd, model.texts.bottomEnd}};
    for (const auto& [corner, name] : corners) {
        const bool isCurrent = !model.placement.position && corner == model.placement.corner;
        addChoice(menu, name, isCurrent, [move = model.actions.move, placement = model.placement, corner] {
            WidgetPlacement changed = placement;
            changed.corner = corner;
            changed.position.reset();
            move(changed);
        });
    }
}

void addOutputs(GtkWidget* menu, const WidgetMenuModel& model) {
    std::string current = model.placement.output;
    bool isThere = false;
    for (const Output& output : model.outputs)
        isThere = isThere || output.name == current;
    if (!isThere) current = model.outputs.front().name;
    for (const Output& output : model.outputs) {
        addChoice(menu, output.name, output.name == current,
                  [move = model.actions.move, placement = model.placement, name = output.name] {
                      WidgetPlacement changed = placement;
                      changed.output = name;
                      changed.position.reset();
                      move(changed);
                  });
    }
}

}  // namespace

GtkWidget* makeWidgetMenu(const WidgetMenuModel& model) {
    GtkWidget* menu = gtk_menu_new();
    if (model.target && model.actions.targetItems) {
        const auto items = model.actions.targetItems(*model.target);
        addItems(menu, items);
        if (!items.empty()) append(menu, gtk_separator_menu_item_new());
    }
    if (model.actions.changeFamily && model.identity.families.size() > 1)
        addSizes(addSubmenu(menu, model.texts.size), model);
    if (model.actions.move && model.canPlace) {
        addCorners(addSubmenu(menu, model.texts.moveTo), model);
        if (model.outputs.size() > 1) addOutputs(addSubmenu(menu, model.texts.screen), model);
    }
    if (!model.canPlace) addRemark(menu, model.texts.cannotPlace);
    if (model.actions.openGallery) addAction(menu, model.texts.openGallery, model.actions.openGallery);
    if (model.actions.remove) {
        append(menu, gtk_separator_menu_item_new());
        addAction(menu, model.texts.remove, model.actions.remove);
    }
    if (model.actions.programItems) {
        append(menu, gtk_separator_menu_item_new());
        addItems(menu, model.actions.programItems());
    }
    return menu;
}

}  // namespace platform
