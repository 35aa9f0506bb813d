#pragma once

#include <HbrCore/Events/EventSettings.h>
#include <HbrCore/Stores/EventSettingsStore.h>
#include <HbrCore/Stores/UserSettingsStore.h>
#include <HbrUtils/Formatters.h>
#include <HeedbannerWidgetExtension/WidgetStrings.h>

#include <optional>
#include <string>

namespace hbr {

/// What the views need of the settings, read once per drawing.
struct EventViewSettings {
    /// General lead time of alerts, in seconds.
    double timeOffset = 0;
    bool includeTravelTime = true;
    bool debugScreenshotMode = false;
    EventSettingsStore::Settings eventSettings = {};

    static EventViewSettings read(const UserSettingsStore& settings, const EventSettingsStore& eventSettings);

    std::optional<EventSettings> customSettings(const std::string& eventID) const;
};

/// Handed to every view beside what it draws; must outlive the call of its body.
struct EventViewInputs {
    const EventViewSettings& settings;
    const Formatters& formatters;
    const WidgetStrings& strings;
};

}  // namespace hbr
