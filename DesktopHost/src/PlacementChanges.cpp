#include "PlacementChanges.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace hbr {

namespace {

auto isPlacementOf(const WidgetCatalogue::Choice& choice) {
    return [&choice](const PlacedWidget& widget) {
        return widget.name == choice.name && widget.family == choice.family;
    };
}

}  // namespace

PlacementsFile::Change addingWidget(WidgetCatalogue::Choice widget, platform::Corner corner,
                                    std::string output) {
    return
        [widget = std::move(widget), corner, output = std::move(output)](std::vector<PlacedWidget>& placed) {
            placed.push_back(placedWidget(widget.name, widget.family, corner, output, placed));
        };
}

PlacementsFile::Change addingMissingWidgets(std::vector<WidgetCatalogue::Choice> widgets) {
    return [widgets = std::move(widgets)](std::vector<PlacedWidget>& placed) {
        for (const auto& widget : widgets) {
            if (std::ranges::none_of(placed, isPlacementOf(widget))) addingWidget(widget)(placed);
        }
    };
}

PlacementsFile::Change removingLastWidget(WidgetCatalogue::Choice widget) {
    return [widget = std::move(widget)](std::vector<PlacedWidget>& placed) {
        const auto found = std::find_if(placed.rbegin(), placed.rend(), isPlacementOf(widget));
        if (found != placed.rend()) placed.erase(std::next(found).base());
    };
}

}  // namespace hbr
