#include <WidgetHost/StaticConfiguration.h>

#include <algorithm>

namespace platform {

StaticConfiguration StaticConfiguration::configurationDisplayName(std::string key) const {
    StaticConfiguration changed = *this;
    changed.displayNameKey_ = std::move(key);
    return changed;
}

StaticConfiguration StaticConfiguration::description(std::string key) const {
    StaticConfiguration changed = *this;
    changed.descriptionKey_ = std::move(key);
    return changed;
}

StaticConfiguration StaticConfiguration::supportedFamilies(std::vector<WidgetFamily> families) const {
    StaticConfiguration changed = *this;
    changed.families_ = std::move(families);
    return changed;
}

bool StaticConfiguration::supports(WidgetFamily family) const {
    return std::ranges::find(families_, family) != families_.end();
}

}  // namespace platform
