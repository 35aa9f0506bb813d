#include <HeedbannerWidgetExtension/Views/EventViewSettings.h>

namespace hbr {

EventViewSettings EventViewSettings::read(const UserSettingsStore& settings,
                                          const EventSettingsStore& eventSettings) {
    return {.timeOffset = static_cast<double>(settings.timeOffsetSeconds()),
            .includeTravelTime = settings.includeTravelTime(),
            .debugScreenshotMode = settings.debugScreenshotMode(),
            .eventSettings = eventSettings.customSettings().value_or(EventSettingsStore::Settings{})};
}

std::optional<EventSettings> EventViewSettings::customSettings(const std::string& eventID) const {
    const auto found = eventSettings.find(eventID);
    return found == eventSettings.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace hbr
