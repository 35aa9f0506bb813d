#include "WidgetBoard.h"

#include "EntryContent.h"

#include <algorithm>
#include <utility>

namespace hbr {

namespace {

std::string familyKey(platform::WidgetFamily family) {
    return "Widget.desktop.family." + std::string(nameOf(family));
}

/// The same widget in the file, whatever table it now has.
bool isSame(const PlacedWidget& a, const PlacedWidget& b) {
    return a.name == b.name && a.family == b.family && a.placement == b.placement;
}

}  // namespace

platform::WidgetIdentity widgetIdentity(const platform::WidgetBundle& bundle,
                                        const platform::StaticConfiguration& configuration) {
    platform::WidgetIdentity identity{.kind = configuration.kind(),
                                      .name = bundle.localizedText(configuration.displayNameKey()),
                                      .families = {}};
    for (const platform::WidgetFamily family : configuration.families())
        identity.families.push_back({family, bundle.localizedText(familyKey(family))});
    return identity;
}

WidgetBoard::WidgetBoard(platform::WidgetDesk& desk, const platform::WidgetBundle& bundle,
                         const WidgetCatalogue& catalogue, Actions actions)
    : desk_(desk), bundle_(bundle), catalogue_(catalogue), actions_(std::move(actions)) {}

WidgetBoard::~WidgetBoard() = default;

void WidgetBoard::show(const std::vector<PlacedWidget>& placed) {
    auto left = std::exchange(tiles_, {});
    std::vector<const PlacedWidget*> unmatched;
    const auto take = [&](const PlacedWidget& widget, const auto& matches) {
        const auto found =
            std::ranges::find_if(left, [&](const auto& tile) { return matches(tile->placed); });
        if (found == left.end()) return false;
        adapt(**found, widget);
        tiles_.push_back(std::move(*found));
        left.erase(found);
        return true;
    };
    for (const PlacedWidget& widget : placed) {
        const bool isKept = take(widget, [&](const PlacedWidget& one) { return isSame(one, widget); });
        if (!isKept) unmatched.push_back(&widget);
    }
    for (const PlacedWidget* widget : unmatched) {
        // Reuse the window of a changed widget.
        if (take(*widget, [&](const PlacedWidget& one) { return one.name == widget->name; })) continue;
        if (const auto* known = catalogue_.find(widget->name, widget->family))
            tiles_.push_back(makeTile(*widget, *known));
    }
}

std::unique_ptr<WidgetBoard::Tile> WidgetBoard::makeTile(const PlacedWidget& placed,
                                                         const WidgetCatalogue::Widget& widget) {
    auto tile = std::make_unique<Tile>();
    tile->placed = placed;
    tile->kind = widget.configuration.kind();
    Tile* self = tile.get();
    platform::WidgetActions actions{
        .open = actions_.open,
        .changeFamily =
            [this, self](platform::WidgetFamily family) {
                changePlaced(*self, [family](PlacedWidget& one) { one.family = family; });
            },
        .move =
            [this, self](const platform::WidgetPlacement& placement) {
                changePlaced(*self, [placement](PlacedWidget& one) { one.placement = placement; });
            },
        .remove =
            [this, self] {
                actions_.change([gone = self->placed](std::vector<PlacedWidget>& widgets) {
                    const auto found = std::ranges::find_if(
                        widgets, [&](const PlacedWidget& one) { return isSame(one, gone); });
                    if (found != widgets.end()) widgets.erase(found);
                });
            },
        .openGallery = actions_.openGallery,
        .targetItems = actions_.targetItems,
        .programItems = actions_.programItems};
    tile->window = desk_.add(widgetIdentity(bundle_, widget.configuration), placed.family, placed.placement,
                             std::move(actions));
    if (badge_) tile->window->setBadge(badge_);
    setContent(*tile);
    return tile;
}

void WidgetBoard::adapt(Tile& tile, const PlacedWidget& placed) {
    if (tile.placed.family != placed.family) tile.window->setFamily(placed.family);
    if (tile.placed.placement != placed.placement) tile.window->setPlacement(placed.placement);
    tile.placed = placed;
}

void WidgetBoard::changePlaced(const Tile& tile, const std::function<void(PlacedWidget&)>& change) const {
    actions_.change([change, old = tile.placed](std::vector<PlacedWidget>& widgets) {
        const auto found =
            std::ranges::find_if(widgets, [&](const PlacedWidget& one) { return isSame(one, old); });
        if (found != widgets.end()) change(*found);
    });
}

std::vector<std::string> WidgetBoard::kinds() const {
    std::vector<std::string> kinds;
    for (const auto& tile : tiles_) {
        if (std::ranges::find(kinds, tile->kind) == kinds.end()) kinds.push_back(tile->kind);
    }
    return kinds;
}

void WidgetBoard::setContent(Tile& tile) const {
    if (notice_) return tile.window->setContent(*notice_);
    const auto entry = entries_.find(tile.kind);
    if (entry == entries_.end()) return;
    tile.window->setContent(entryContent(entry->second));
}

void WidgetBoard::setEntry(const std::string& kind, const platform::WidgetEntry& entry) {
    entries_.insert_or_assign(kind, entry);
    if (notice_) return;
    for (const auto& tile : tiles_) {
        if (tile->kind == kind) setContent(*tile);
    }
}

void WidgetBoard::setNotice(std::optional<platform::WidgetContent> notice) {
    if (!notice && !notice_) return;
    notice_ = std::move(notice);
    for (const auto& tile : tiles_)
        setContent(*tile);
}

void WidgetBoard::setBadge(const std::optional<std::string>& tooltip) {
    if (badge_ == tooltip) return;
    badge_ = tooltip;
    for (const auto& tile : tiles_)
        tile->window->setBadge(badge_);
}

void WidgetBoard::invalidate() {
    for (const auto& tile : tiles_)
        tile->window->invalidate();
}

void WidgetBoard::lift(std::string_view name) {
    const auto first =
        std::ranges::find_if(tiles_, [name](const auto& tile) { return tile->placed.name == name; });
    desk_.lift(first == tiles_.end() ? nullptr : (*first)->window.get());
}

}  // namespace hbr
