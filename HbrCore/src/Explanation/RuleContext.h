#pragma once

#include <HbrCore/CoreServices.h>
#include <HbrCore/Events/Attendance.h>
#include <HbrCore/Events/FilterRuleMatcher.h>
#include <HbrCore/Explanation/EventExplanation.h>
#include <HbrCore/Scheduling/AlertSchedule.h>
#include <HbrCore/Scheduling/ReloadSettings.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace hbr {

/// What every verdict is given by, read once.
struct RuleContext {
    RuleContext(const CoreServices& services, std::set<std::string> decidedIdentifiers);

    const CoreServices& core;
    const platform::Calendar& calendar;
    const Formatters& formatters;
    platform::Date now;
    /// What a reload goes by.
    std::shared_ptr<const ReloadSettings> settings;
    /// What a reload looks at.
    ReloadWindow window;
    const AlertSettings& alertSettings;
    AttendanceSettings attendance;
    const std::vector<FilterRule>& rules;
    FilterRuleMatcher matcher;
    AlertSchedule schedule;
    std::set<std::string> watchedCalendars;
    std::set<std::string> watchedLists;
    std::set<std::string> decided;

    std::optional<EventSettings> settingsOf(const Event& event) const {
        return EventSettingsStore::find(settings->eventSettings, event.id);
    }
    /// "10:15 AM" of today, else with the day.
    std::string moment(platform::Date date) const;
    /// "at 10:15 AM" of today, else with the day.
    std::string when(platform::Date date) const;
    /// "1 hour, 30 minutes".
    std::string duration(double seconds) const;
};

inline RuleVerdict passes(ListingRule rule, std::string detail) {
    return {rule, RuleDecision::passes, std::move(detail)};
}

inline RuleVerdict hides(ListingRule rule, std::string detail,
                         std::optional<std::string> command = std::nullopt) {
    return {rule, RuleDecision::hides, std::move(detail), std::move(command)};
}

/// Whether none of the verdicts hides it.
inline bool isListable(const std::vector<RuleVerdict>& verdicts) {
    return std::ranges::none_of(
        verdicts, [](const RuleVerdict& verdict) { return verdict.decision == RuleDecision::hides; });
}

/// "1 day", "2 days".
std::string countedDays(std::int64_t count);

}  // namespace hbr
