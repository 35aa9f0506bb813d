#include "PlacementCommands.h"

#include "PlacementChanges.h"

#include <Values/JsonText.h>
#include <Values/JsonValue.h>

#include <charconv>
#include <cmath>
#include <cstddef>

namespace hbr {

namespace {

using platform::JsonValue;

JsonValue jsonOf(const PlacedWidget& widget, std::size_t number) {
    JsonValue json = JsonValue::object();
    json.set("number", static_cast<std::int64_t>(number))
        .set("widget", widget.name)
        .set("family", std::string(nameOf(widget.family)))
        .set("corner", std::string(nameOf(widget.placement.corner)));
    if (!widget.placement.output.empty()) json.set("output", widget.placement.output);
    if (const auto& position = widget.placement.position) {
        JsonValue place = JsonValue::array();
        place.append(position->x);
        place.append(position->y);
        json.set("position", std::move(place));
    }
    return json;
}

std::string lineOf(const PlacedWidget& widget, std::size_t number) {
    const auto whole = [](double value) { return std::to_string(std::lround(value)); };
    std::string line = std::to_string(number) + "  " + widget.name + ":" + std::string(nameOf(widget.family));
    if (const auto& position = widget.placement.position) {
        line += "  at " + whole(position->x) + "," + whole(position->y);
    } else {
        line += "  " + std::string(nameOf(widget.placement.corner));
    }
    if (!widget.placement.output.empty()) line += "  " + widget.placement.output;
    return line;
}

void change(const PlacementsFile& file, const PlacementsFile::Change& work) {
    if (!file.update(work))
        throw HostFailure(ExitStatus::failed, file.path().string() + " could not be written");
}

}  // namespace

void listWidgets(const PlacementsFile& file, bool wantsJson, std::ostream& out) {
    const auto contents = file.load();
    if (contents.isBroken) throw HostFailure(ExitStatus::failed, file.path().string() + " cannot be read");
    JsonValue list = JsonValue::array();
    std::size_t number = 0;
    for (const PlacedWidget& widget : contents.widgets) {
        ++number;
        if (wantsJson) {
            list.append(jsonOf(widget, number));
        } else {
            out << lineOf(widget, number) << '\n';
        }
    }
    if (wantsJson) out << platform::writeJson(list, 2) << '\n';
}

void addWidget(const PlacementsFile& file, const WidgetCatalogue& catalogue, const HostRequest& request) {
    const auto choice = catalogue.choice(request.widgets.front());
    const auto corner = platform::cornerNamed(request.corner).value_or(platform::Corner::topEnd);
    change(file, addingWidget(choice, corner, request.output));
}

void removeWidgets(const PlacementsFile& file, const std::string& which) {
    const auto contents = file.load();
    if (contents.isBroken) throw HostFailure(ExitStatus::failed, file.path().string() + " cannot be read");
    const std::size_t count = contents.widgets.size();
    if (which == "all") return change(file, [](std::vector<PlacedWidget>& widgets) { widgets.clear(); });

    std::size_t number = 0;
    const auto [end, error] = std::from_chars(which.data(), which.data() + which.size(), number);
    if (error != std::errc() || end != which.data() + which.size())
        throw HostFailure(ExitStatus::wrongUsage, "--remove takes a number of --list, or all");
    if (number < 1 || number > count) {
        throw HostFailure(ExitStatus::nothingThere, "there is no widget " + which + "; placed are " +
                                                        std::to_string(count) + ", see --list");
    }
    change(file, [gone = contents.widgets[number - 1]](std::vector<PlacedWidget>& widgets) {
        // Another program may have changed the file since.
        std::erase(widgets, gone);
    });
}

void placeMissing(const PlacementsFile& file, const std::vector<WidgetCatalogue::Choice>& wanted) {
    if (!wanted.empty()) change(file, addingMissingWidgets(wanted));
}

}  // namespace hbr
