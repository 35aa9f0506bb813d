#include "WidgetCatalogue.h"

#include "HostFailure.h"

#include <TimeAndText/JoinedText.h>
#include <TimeAndText/NearestName.h>

#include <algorithm>

namespace hbr {

WidgetCatalogue::WidgetCatalogue(const platform::WidgetBundle& bundle) {
    for (platform::StaticConfiguration& configuration : bundle.body()) {
        std::string name = bundle.shortName(configuration.kind());
        widgets_.push_back({std::move(name), std::move(configuration)});
    }
}

const WidgetCatalogue::Widget* WidgetCatalogue::find(std::string_view name) const {
    const auto found = std::ranges::find_if(widgets_, [name](const Widget& widget) {
        return widget.name == name || widget.configuration.kind() == name;
    });
    return found == widgets_.end() ? nullptr : &*found;
}

const WidgetCatalogue::Widget* WidgetCatalogue::find(std::string_view name,
                                                     platform::WidgetFamily family) const {
    const Widget* widget = find(name);
    return widget && widget->configuration.supports(family) ? widget : nullptr;
}

std::vector<std::string> WidgetCatalogue::names() const {
    std::vector<std::string> names;
    for (const Widget& widget : widgets_)
        names.push_back(widget.name);
    return names;
}

WidgetCatalogue::Choice WidgetCatalogue::choice(std::string_view text) const {
    const auto colon = text.find(':');
    const std::string_view name = text.substr(0, colon);
    const Widget* widget = find(name);
    if (!widget) {
        throw HostFailure(ExitStatus::failed, "no widget \"" + std::string(name) + "\"" +
                                                  platform::proposal(name, names()) +
                                                  "; there are: " + platform::joined(names()));
    }
    if (colon == std::string_view::npos) return {widget->name, platform::WidgetFamily::systemMedium};

    const std::string_view familyName = text.substr(colon + 1);
    const auto family = platform::widgetFamily(familyName);
    if (family && widget->configuration.supports(*family)) return {widget->name, *family};
    std::vector<std::string> families;
    for (const platform::WidgetFamily one : widget->configuration.families())
        families.emplace_back(nameOf(one));
    throw HostFailure(ExitStatus::failed, "the widget " + widget->name + " has no family \"" +
                                              std::string(familyName) + "\"" +
                                              platform::proposal(familyName, families) +
                                              "; it has: " + platform::joined(families));
}

}  // namespace hbr
