#pragma once

#include <HbrCore/Events/FilterRule.h>
#include <HbrUtils/CodableUserDefault.h>
#include <HbrUtils/Setting.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace hbr {

/// Everything that the user's settings domains hold. What reads, lists, completes, migrates or observes
/// settings takes them from here. To add a setting: a line here and in `all`, its property in
/// `UserSettingsStore`, its meaning in the companion's string tables ("Settings.meaning.NAME") and its row in
/// docs/settings.md.
struct SettingsTable {
    using Identifiers = std::vector<std::string>;
    using Numbers = std::vector<std::int64_t>;
    using Rules = std::vector<FilterRule>;
    using Number = Setting<std::int64_t>;
    using Flag = Setting<bool>;
    using Form = SettingKind::Form;
    static constexpr std::int64_t minutesOfDay = 24 * 60;

    static constexpr Setting<Identifiers> activeCalendarIdentifiers{
        "activeCalendarIdentifiers", {}, {Form::identifiers}};
    static constexpr Setting<Identifiers> activeReminderListIdentifiers{
        "activeReminderListIdentifiers", {}, {Form::identifiers}};
    static constexpr Number timeOffsetSeconds{"timeOffsetSeconds", 60, {Form::seconds, 0, 60 * minutesOfDay}};
    static constexpr Flag showOnlyEventsWithAlert{"showOnlyEventsWithAlert", false, {Form::boolean}};
    /// Stored, not negated, under the name of an older setting.
    static constexpr Flag showOnlyAcceptedEvents =
        Flag("showOnlyAcceptedEvents", false, {Form::boolean}).storedAs("showTentativeEvents");
    static constexpr Flag showOnlyEventsWithVideoConference{
        "showOnlyEventsWithVideoConference", false, {Form::boolean}};
    static constexpr Number upcomingEventsDaysFilter{"upcomingEventsDaysFilter", 7, {Form::days, 0, 365}};
    static constexpr Flag includeTravelTime{"includeTravelTime", false, {Form::boolean}};
    static constexpr Setting<Numbers> customSnoozeTimes{
        "customSnoozeTimes", {}, {Form::listOfMinutes, 1, minutesOfDay}};
    static constexpr Number defaultSnooze1{"defaultSnooze1", 1, {Form::minutes, 1, minutesOfDay}};
    static constexpr Number defaultSnooze2{"defaultSnooze2", 5, {Form::minutes, 1, minutesOfDay}};
    static constexpr Setting<Rules, JsonDataCoding<Rules>> excludeRules{"excludeRules", {}, {Form::rules}};
    static constexpr Flag debugScreenshotMode =
        Flag("debugScreenshotMode", false, {Form::boolean}).storedAs("debug_screenshotMode");
    static constexpr Number keyboardShortcutsDelay =
        Number("keyboardShortcutsDelay", 1, {Form::seconds, 0, 60}).inStandardDomain();

    /// The settings in their order.
    static constexpr auto all =
        std::tie(activeCalendarIdentifiers, activeReminderListIdentifiers, timeOffsetSeconds,
                 showOnlyEventsWithAlert, showOnlyAcceptedEvents, showOnlyEventsWithVideoConference,
                 upcomingEventsDaysFilter, includeTravelTime, customSnoozeTimes, defaultSnooze1,
                 defaultSnooze2, excludeRules, debugScreenshotMode, keyboardShortcutsDelay);

    /// The same without their types.
    static constexpr auto facts = std::apply(
        [](const auto&... settings) { return std::array{static_cast<const SettingFacts&>(settings)...}; },
        all);

    // What stores of their own keep beside the settings in the shared domain.
    static constexpr std::string_view customReminders = "customReminders";
    static constexpr std::string_view eventSettings = "eventSettings";
    static constexpr std::string_view hiddenOccurrences = "hiddenOccurrences";
    static constexpr std::array records = {customReminders, eventSettings, hiddenOccurrences};
};

// Reads of a domain by itself: 0, not the default, when the key is absent or has another type.
inline std::int64_t defaultSnooze1(const platform::DefaultsDomain& domain) {
    return domain.integer(SettingsTable::defaultSnooze1.key);
}
inline std::int64_t defaultSnooze2(const platform::DefaultsDomain& domain) {
    return domain.integer(SettingsTable::defaultSnooze2.key);
}
inline std::int64_t upcomingEventsDaysFilter(const platform::DefaultsDomain& domain) {
    return domain.integer(SettingsTable::upcomingEventsDaysFilter.key);
}

}  // namespace hbr
