#pragma once

#include <CalendarStore/EKEventStore.h>
#include <HbrCore/Events/Attendance.h>
#include <HbrCore/Events/Event.h>
#include <HbrCore/Events/EventRef.h>
#include <HbrCore/Stores/EventSettingsStore.h>
#include <System/Environment.h>
#include <System/NotificationCenter.h>

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace hbr {

class UserSettingsStore;

inline constexpr std::string_view grantedPermissionNotification = "GrantedPermission";

/// Why access to the calendars could not be had.
class EventKitError : public std::runtime_error {
  public:
    enum class Code { accessNotGranted };
    explicit EventKitError(Code code);
    Code code() const { return code_; }

  private:
    Code code_;
};

/// The one gateway to the calendars: the user's own accounts and, once calendar access was asked for and
/// given, the delegated ones; only calendars and lists that the user switched on are queried. Safe from any
/// thread.
class AggregatedEventStore {
  public:
    struct Collaborators {
        platform::EnvironmentRef environment;
        platform::NotificationCenter& center;
        /// Of own and delegated accounts.
        platform::CalendarSourcesRef sources;
        std::shared_ptr<UserSettingsStore> settings;
        std::shared_ptr<EventSettingsStore> eventSettings;
        std::shared_ptr<const VideoConferenceLinkParser> parser;
    };
    /// How far ahead pending events are looked for, in seconds.
    static constexpr double pendingWindow = 3600;

    explicit AggregatedEventStore(Collaborators collaborators);
    /// Of CoreServices::shared().
    static AggregatedEventStore& shared();
    ~AggregatedEventStore();
    AggregatedEventStore(const AggregatedEventStore&) = delete;
    AggregatedEventStore& operator=(const AggregatedEventStore&) = delete;

    bool hasCalendarAccess() const;
    bool hasReminderAccess() const;
    using AccessCompletion = std::function<void(std::exception_ptr error)>;
    /// Completes with EventKitError without full access; with it, delegated calendars are included from now
    /// on.
    void requestCalendarAccess(const AccessCompletion& completion);
    /// Refused access is not an error.
    void requestReminderAccess(const AccessCompletion& completion);
    void refreshData();
    /// Watches the sources for changes; long-lived processes only.
    void startWatching();

    platform::EKCalendarRef calendarWithIdentifier(std::string_view identifier) const;
    /// Own calendars, then delegated ones that are not among them.
    std::vector<platform::EKCalendarRef> calendars(platform::EKEntityType type) const;
    std::vector<platform::EKCalendarRef> activeCalendars() const;
    std::vector<platform::EKCalendarRef> activeReminderCalendars() const;

    /// nullptr when there is none.
    platform::EKEventRef eventWithIdentifier(std::string_view identifier) const;
    /// Own lists only.
    platform::EKReminderRef reminderWithIdentifier(std::string_view identifier) const;

    /// Of the active calendars; an occurrence in both stores is listed once, as the own store's.
    std::vector<platform::EKEventRef> events(platform::Date start, platform::Date end) const;
    using RemindersCompletion = std::function<void(std::vector<platform::EKReminderRef>)>;
    /// Incomplete ones due in the interval. Completes on the store's worker thread, or at once on the
    /// calling thread when no list is active.
    void reminders(platform::Date start, platform::Date end, RemindersCompletion completion) const;

    /// Of every calendar, watched or not; what both stores hold is listed twice, the own store's first.
    std::vector<platform::EKEventRef> eventsOfAllCalendars(platform::Date start, platform::Date end) const;
    /// Of every list, watched or not, completed or not, due or not. Waits for the stores' worker threads:
    /// never to be called on one of them.
    std::vector<platform::EKReminderRef> remindersOfAllLists() const;

    /// What decides which events are shown and in their alert period. Lists that belong together are asked
    /// for with one reading: a setting that changes in between moves no event out of all of them.
    struct Choices {
        AttendanceSettings attendance;
        /// Seconds.
        double timeOffset = 0;
        std::optional<EventSettingsStore::Settings> eventSettings;
    };
    Choices choices() const;

    /// Scheduled events under way, by start.
    std::vector<Event> currentEvents(platform::Date now) const { return currentEvents(now, choices()); }
    std::vector<Event> currentEvents(platform::Date now, const Choices& choices) const;
    /// Scheduled events of the next hour inside their alert period, by start.
    std::vector<Event> pendingEvents(platform::Date now) const { return pendingEvents(now, choices()); }
    std::vector<Event> pendingEvents(platform::Date now, const Choices& choices) const;
    /// The same, of events that `make` gives, which may be kept ones.
    using MakeEvent = std::function<EventRef(const platform::EKEventRef&)>;
    EventRefs currentEvents(platform::Date now, const Choices& choices, const MakeEvent& make) const;
    EventRefs pendingEvents(platform::Date now, const Choices& choices, const MakeEvent& make) const;
    using EventsCompletion = std::function<void(std::vector<Event>)>;
    /// Completes as `reminders` does.
    void pendingAppleReminderEvents(platform::Date now, EventsCompletion completion) const {
        pendingAppleReminderEvents(now, choices(), std::move(completion));
    }
    void pendingAppleReminderEvents(platform::Date now, Choices choices, EventsCompletion completion) const;

    /// Whether there are delegated accounts, asked for or not.
    bool hasDelegatedAccounts() const;
    /// Another number after every change of what the stores answer.
    std::uint64_t revision() const;

    /// What was read from the own accounts, then from the delegated ones.
    std::vector<platform::AccountReport> report() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace hbr
