#pragma once

#include "WidgetCatalogue.h"

#include <Desktop/WidgetDesk.h>
#include <DesktopHost/PlacementsFile.h>
#include <WidgetHost/WidgetBundle.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// The windows of the placed widgets: makes and drops them as the placements change, shows each kind's entry
/// in all of them, and keeps what the user does with them. Main thread.
class WidgetBoard {
  public:
    struct Actions {
        /// A tap.
        std::function<void(const platform::Url&)> open;
        std::function<void()> openGallery;
        /// Keeps a change of the placements; the board is then shown them again.
        std::function<void(const PlacementsFile::Change&)> change;
        /// Of the menu, as in platform::WidgetActions.
        std::function<std::vector<platform::MenuItem>(const platform::Url&)> targetItems;
        std::function<std::vector<platform::MenuItem>()> programItems;
    };

    WidgetBoard(platform::WidgetDesk& desk, const platform::WidgetBundle& bundle,
                const WidgetCatalogue& catalogue, Actions actions);
    ~WidgetBoard();

    void show(const std::vector<PlacedWidget>& placed);
    /// Kinds of the windows, each once.
    std::vector<std::string> kinds() const;
    void setEntry(const std::string& kind, const platform::WidgetEntry& entry);
    /// Stands in every widget in place of its entry; nothing takes it away.
    void setNotice(std::optional<platform::WidgetContent> notice);
    void setBadge(const std::optional<std::string>& tooltip);
    /// Draws everything again.
    void invalidate();
    /// Lifts the widgets; the keyboard goes to the first with the name, if any.
    void lift(std::string_view name);

  private:
    struct Tile {
        PlacedWidget placed;
        std::string kind;
        std::unique_ptr<platform::WidgetWindow> window;
    };

    std::unique_ptr<Tile> makeTile(const PlacedWidget& placed, const WidgetCatalogue::Widget& widget);
    void adapt(Tile& tile, const PlacedWidget& placed);
    void setContent(Tile& tile) const;
    void changePlaced(const Tile& tile, const std::function<void(PlacedWidget&)>& change) const;
    platform::WidgetIdentity identityOf(const platform::StaticConfiguration& configuration) const;

    platform::WidgetDesk& desk_;
    const platform::WidgetBundle& bundle_;
    const WidgetCatalogue& catalogue_;
    const Actions actions_;
    std::vector<std::unique_ptr<Tile>> tiles_;
    std::map<std::string, platform::WidgetEntry> entries_;
    std::optional<platform::WidgetContent> notice_;
    std::optional<std::string> badge_;
};

/// A widget as menus and the gallery name it.
platform::WidgetIdentity widgetIdentity(const platform::WidgetBundle& bundle,
                                        const platform::StaticConfiguration& configuration);

}  // namespace hbr
