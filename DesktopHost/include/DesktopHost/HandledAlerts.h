#pragma once

#include <HbrCore/Scheduling/AlertInvocation.h>
#include <System/Environment.h>
#include <Values/JsonValue.h>

#include <compare>
#include <filesystem>
#include <string>
#include <vector>

namespace hbr {

/// An alert that was shown, named by its event's id and start. No text of the event is kept.
struct HandledAlert {
    std::string eventId;
    platform::Date start;
    /// When it was due.
    platform::Date alert;
    bool isSnooze = false;

    static HandledAlert of(const AlertInvocation& invocation);
    /// Alerts of one event are together, by start.
    friend auto operator<=>(const HandledAlert&, const HandledAlert&) = default;
};

/// [{"event", "start", "date", "snooze"}], dates in seconds since 2001-01-01 00:00 UTC.
platform::JsonValue json(const std::vector<HandledAlert>& alerts);
/// Entries that cannot be read are left out; nothing but an array gives an empty list.
std::vector<HandledAlert> handledAlerts(const platform::JsonValue* list);

/// What was shown, across the runs of the program, so that none alerts twice: `alerts.json` of the data
/// directory, mode 0600. A file that cannot be read is an empty one.
class HandledAlertsFile {
  public:
    explicit HandledAlertsFile(platform::EnvironmentRef environment);

    std::vector<HandledAlert> load() const;
    /// Replaces what is there. A failure goes to the diagnostics.
    void save(const std::vector<HandledAlert>& alerts) const;

  private:
    platform::EnvironmentRef environment_;
    std::filesystem::path path_;
};

}  // namespace hbr
