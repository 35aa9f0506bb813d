#pragma once

#include <HbrCore/Stores/SettingsTable.h>
#include <HbrUtils/DefaultsDomains.h>
#include <HbrUtils/UserDefault.h>
#include <System/Diagnostics.h>

#include <cstdint>
#include <functional>
#include <memory>

namespace hbr {

/// The settings of `SettingsTable` as properties. Nothing is cached: every read sees the newest write of any
/// process. Writes post no notification and are false when the domain's file could not be written. Safe from
/// any thread.
class UserSettingsStore {
  public:
    using Table = SettingsTable;

    /// Copies the standard domain's settings into the shared one unless its marker is set, then converts
    /// the obsolete "timeOffset" (minutes); what cannot be converted stays, with a diagnostic.
    UserSettingsStore(DefaultsDomains domains, std::shared_ptr<platform::DiagnosticsSink> diagnostics);
    /// Of CoreServices::shared().
    static UserSettingsStore& shared();

    /// One setting of the table, to read, write or change it.
    template <class T, class Coding>
    UserDefault<T, Coding> property(const Setting<T, Coding>& setting) const {
        return {setting, domains_};
    }

    Table::Identifiers activeCalendarIdentifiers() const { return get(Table::activeCalendarIdentifiers); }
    bool setActiveCalendarIdentifiers(const Table::Identifiers& identifiers) {
        return set(Table::activeCalendarIdentifiers, identifiers);
    }
    Table::Identifiers activeReminderListIdentifiers() const {
        return get(Table::activeReminderListIdentifiers);
    }
    bool setActiveReminderListIdentifiers(const Table::Identifiers& identifiers) {
        return set(Table::activeReminderListIdentifiers, identifiers);
    }
    /// How long before the start an alert is due.
    std::int64_t timeOffsetSeconds() const { return get(Table::timeOffsetSeconds); }
    bool setTimeOffsetSeconds(std::int64_t seconds) { return set(Table::timeOffsetSeconds, seconds); }
    bool showOnlyEventsWithAlert() const { return get(Table::showOnlyEventsWithAlert); }
    bool setShowOnlyEventsWithAlert(bool value) { return set(Table::showOnlyEventsWithAlert, value); }
    bool showOnlyAcceptedEvents() const { return get(Table::showOnlyAcceptedEvents); }
    bool setShowOnlyAcceptedEvents(bool value) { return set(Table::showOnlyAcceptedEvents, value); }
    bool showOnlyEventsWithVideoConference() const { return get(Table::showOnlyEventsWithVideoConference); }
    bool setShowOnlyEventsWithVideoConference(bool value) {
        return set(Table::showOnlyEventsWithVideoConference, value);
    }
    std::int64_t upcomingEventsDaysFilter() const { return get(Table::upcomingEventsDaysFilter); }
    bool setUpcomingEventsDaysFilter(std::int64_t days) { return set(Table::upcomingEventsDaysFilter, days); }
    bool includeTravelTime() const { return get(Table::includeTravelTime); }
    bool setIncludeTravelTime(bool value) { return set(Table::includeTravelTime, value); }
    /// Minutes.
    Table::Numbers customSnoozeTimes() const { return get(Table::customSnoozeTimes); }
    bool setCustomSnoozeTimes(const Table::Numbers& minutes) {
        return set(Table::customSnoozeTimes, minutes);
    }
    std::int64_t defaultSnooze1() const { return get(Table::defaultSnooze1); }
    bool setDefaultSnooze1(std::int64_t minutes) { return set(Table::defaultSnooze1, minutes); }
    std::int64_t defaultSnooze2() const { return get(Table::defaultSnooze2); }
    bool setDefaultSnooze2(std::int64_t minutes) { return set(Table::defaultSnooze2, minutes); }
    /// False where no list was ever stored, which a read of `excludeRules` logs as an error.
    bool hasExcludeRules() const { return domains_.shared->value(Table::excludeRules.key).has_value(); }
    Table::Rules excludeRules() const { return get(Table::excludeRules); }
    bool setExcludeRules(const Table::Rules& rules) { return set(Table::excludeRules, rules); }
    bool debugScreenshotMode() const { return get(Table::debugScreenshotMode); }
    bool setDebugScreenshotMode(bool value) { return set(Table::debugScreenshotMode, value); }
    std::int64_t keyboardShortcutsDelay() const { return get(Table::keyboardShortcutsDelay); }
    bool setKeyboardShortcutsDelay(std::int64_t seconds) {
        return set(Table::keyboardShortcutsDelay, seconds);
    }

    // Changes that depend on the stored value, under the domain's lock.
    using ChangeIdentifiers = std::function<void(Table::Identifiers&)>;
    bool updateActiveCalendarIdentifiers(const ChangeIdentifiers& change) {
        return property(Table::activeCalendarIdentifiers).update(change);
    }
    bool updateActiveReminderListIdentifiers(const ChangeIdentifiers& change) {
        return property(Table::activeReminderListIdentifiers).update(change);
    }
    bool updateExcludeRules(const std::function<void(Table::Rules&)>& change) {
        return property(Table::excludeRules).update(change);
    }

    /// Removes the fourteen keys from the standard domain; the shared one is not touched.
    void resetAll();

    const DefaultsDomains& domains() const { return domains_; }

  private:
    template <class T, class Coding>
    T get(const Setting<T, Coding>& setting) const {
        return property(setting).get();
    }
    template <class T, class Coding>
    bool set(const Setting<T, Coding>& setting, const T& value) {
        return property(setting).set(value);
    }

    DefaultsDomains domains_;
};

}  // namespace hbr
