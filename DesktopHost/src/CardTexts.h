#pragma once

#include <HbrCore/CoreServices.h>
#include <HbrCore/Events/Event.h>
#include <TimeAndText/ClockReading.h>
#include <WidgetHost/WidgetBundle.h>

#include <initializer_list>
#include <string>
#include <string_view>

namespace hbr {

/// What of an event's series is hidden.
enum class HiddenPart { none, occurrence, all };

/// The sentences of an event's card, in the bundle's language.
class CardTexts {
  public:
    CardTexts(const CoreServices& core, const platform::WidgetBundle& bundle)
        : core_(core), bundle_(bundle) {}

    const platform::Environment& environment() const { return *core_.environment(); }
    /// Of the key "Widget.desktop.card." + `key`, with the arguments in their places.
    std::string text(std::string_view key, std::initializer_list<std::string_view> arguments = {}) const;
    /// "Today, from 9:00 to 10:00."
    std::string times(const Event& event, const platform::ClockReading& clock) const;
    /// "In 5 minutes.", "20 minutes remaining.", "This event is over; it ended 20 minutes ago."
    std::string distance(const Event& event, const platform::ClockReading& clock) const;
    /// That it is hidden, by itself or with all of its series.
    std::string hidden(const Event& event, HiddenPart part) const;

  private:
    std::string day(platform::Date date, const platform::ClockReading& clock) const;
    std::string sentence(std::string text) const;

    const CoreServices& core_;
    const platform::WidgetBundle& bundle_;
};

}  // namespace hbr
