#pragma once

#include <HbrCore/Events/FilterRule.h>
#include <HbrUtils/CodableUserDefault.h>
#include <HbrUtils/DefaultsDomains.h>
#include <HbrUtils/UserDefault.h>
#include <System/Diagnostics.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// The user's settings. Nothing is cached: every read sees the newest write of any process. Writes post no
/// notification and are false when the domain's file could not be written. Safe from any thread.
class UserSettingsStore {
  public:
    /// The keys in their order; all but the last live in the shared domain.
    static constexpr std::array<std::string_view, 14> keys = {"activeCalendarIdentifiers",
                                                              "activeReminderListIdentifiers",
                                                              "timeOffsetSeconds",
                                                              "showOnlyEventsWithAlert",
                                                              "showTentativeEvents",
                                                              "showOnlyEventsWithVideoConference",
                                                              "upcomingEventsDaysFilter",
                                                              "includeTravelTime",
                                                              "customSnoozeTimes",
                                                              "defaultSnooze1",
                                                              "defaultSnooze2",
                                                              "excludeRules",
                                                              "debug_screenshotMode",
                                                              "keyboardShortcutsDelay"};

    /// Copies the standard domain's settings into the shared one unless its marker is set, then converts
    /// the obsolete "timeOffset" (minutes); what cannot be converted stays, with a diagnostic.
    UserSettingsStore(DefaultsDomains domains, std::shared_ptr<platform::DiagnosticsSink> diagnostics);
    /// Of CoreServices::shared().
    static UserSettingsStore& shared();

    std::vector<std::string> activeCalendarIdentifiers() const { return activeCalendarIdentifiers_.get(); }
    bool setActiveCalendarIdentifiers(const std::vector<std::string>& identifiers) {
        return activeCalendarIdentifiers_.set(identifiers);
    }
    std::vector<std::string> activeReminderListIdentifiers() const {
        return activeReminderListIdentifiers_.get();
    }
    bool setActiveReminderListIdentifiers(const std::vector<std::string>& identifiers) {
        return activeReminderListIdentifiers_.set(identifiers);
    }
    /// How long before the start an alert is due.
    std::int64_t timeOffsetSeconds() const { return timeOffsetSeconds_.get(); }
    bool setTimeOffsetSeconds(std::int64_t seconds) { return timeOffsetSeconds_.set(seconds); }
    bool showOnlyEventsWithAlert() const { return showOnlyEventsWithAlert_.get(); }
    bool setShowOnlyEventsWithAlert(bool value) { return showOnlyEventsWithAlert_.set(value); }
    /// Stored, not negated, under "showTentativeEvents".
    bool showOnlyAcceptedEvents() const { return showOnlyAcceptedEvents_.get(); }
    bool setShowOnlyAcceptedEvents(bool value) { return showOnlyAcceptedEvents_.set(value); }
    bool showOnlyEventsWithVideoConference() const { return showOnlyEventsWithVideoConference_.get(); }
    bool setShowOnlyEventsWithVideoConference(bool value) {
        return showOnlyEventsWithVideoConference_.set(value);
    }
    std::int64_t upcomingEventsDaysFilter() const { return upcomingEventsDaysFilter_.get(); }
    bool setUpcomingEventsDaysFilter(std::int64_t days) { return upcomingEventsDaysFilter_.set(days); }
    bool includeTravelTime() const { return includeTravelTime_.get(); }
    bool setIncludeTravelTime(bool value) { return includeTravelTime_.set(value); }
    /// Minutes.
    std::vector<std::int64_t> customSnoozeTimes() const { return customSnoozeTimes_.get(); }
    bool setCustomSnoozeTimes(const std::vector<std::int64_t>& minutes) {
        return customSnoozeTimes_.set(minutes);
    }
    std::int64_t defaultSnooze1() const { return defaultSnooze1_.get(); }
    bool setDefaultSnooze1(std::int64_t minutes) { return defaultSnooze1_.set(minutes); }
    std::int64_t defaultSnooze2() const { return defaultSnooze2_.get(); }
    bool setDefaultSnooze2(std::int64_t minutes) { return defaultSnooze2_.set(minutes); }
    /// False where no list was ever stored, which a read of `excludeRules` logs as an error.
    bool hasExcludeRules() const { return domains_.shared->value(excludeRules_.key()).has_value(); }
    std::vector<FilterRule> excludeRules() const { return excludeRules_.get(); }
    bool setExcludeRules(const std::vector<FilterRule>& rules) { return excludeRules_.set(rules); }
    bool debugScreenshotMode() const { return debugScreenshotMode_.get(); }
    bool setDebugScreenshotMode(bool value) { return debugScreenshotMode_.set(value); }
    std::int64_t keyboardShortcutsDelay() const { return keyboardShortcutsDelay_.get(); }
    bool setKeyboardShortcutsDelay(std::int64_t value) { return keyboardShortcutsDelay_.set(value); }

    // Changes that depend on the stored value, under the domain's lock.
    using ChangeIdentifiers = std::function<void(std::vector<std::string>&)>;
    bool updateActiveCalendarIdentifiers(const ChangeIdentifiers& change) {
        return activeCalendarIdentifiers_.update(change);
    }
    bool updateActiveReminderListIdentifiers(const ChangeIdentifiers& change) {
        return activeReminderListIdentifiers_.update(change);
    }
    bool updateExcludeRules(const std::function<void(std::vector<FilterRule>&)>& change) {
        return excludeRules_.update(change);
    }

    /// Removes the fourteen keys from the standard domain; the shared one is not touched.
    void resetAll();

    const DefaultsDomains& domains() const { return domains_; }

  private:
    DefaultsDomains domains_;
    UserDefault<std::vector<std::string>> activeCalendarIdentifiers_;
    UserDefault<std::vector<std::string>> activeReminderListIdentifiers_;
    UserDefault<std::int64_t> timeOffsetSeconds_;
    UserDefault<bool> showOnlyEventsWithAlert_;
    UserDefault<bool> showOnlyAcceptedEvents_;
    UserDefault<bool> showOnlyEventsWithVideoConference_;
    UserDefault<std::int64_t> upcomingEventsDaysFilter_;
    UserDefault<bool> includeTravelTime_;
    UserDefault<std::vector<std::int64_t>> customSnoozeTimes_;
    UserDefault<std::int64_t> defaultSnooze1_;
    UserDefault<std::int64_t> defaultSnooze2_;
    CodableUserDefault<std::vector<FilterRule>> excludeRules_;
    UserDefault<bool> debugScreenshotMode_;
    UserDefault<std::int64_t> keyboardShortcutsDelay_;
};

}  // namespace hbr
