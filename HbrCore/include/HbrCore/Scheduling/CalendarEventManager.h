#pragma once

#include <HbrCore/Events/Event.h>
#include <HbrCore/Scheduling/AlertInvocation.h>
#include <HbrCore/Scheduling/EventLists.h>
#include <HbrCore/Scheduling/UserCalendar.h>
#include <System/Environment.h>
#include <System/NotificationCenter.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

class AggregatedEventStore;
class CustomRemindersStoring;
class DemoEvents;
class EventSettingsStore;
struct ReloadSettings;
class UserSettingsStore;

inline constexpr std::string_view didReloadEventsNotification = "DidReloadEvents";

/// Notified of alerts, on the main queue.
class CalendarEventManagerDelegate {
  public:
    virtual ~CalendarEventManagerDelegate() = default;
    /// At the end of every reload: scheduled alerts, then snoozed ones.
    virtual void didUpdateInvocations(const std::vector<AlertInvocation>& invocations) = 0;
    /// On the thread that removed the snooze.
    virtual void didRemoveSnoozedInvocation(const AlertInvocation& invocation) = 0;
};

/// Answers all questions about events. A reload queries the sources on the calling thread, does the
/// rest on the main queue and ends there; it is started on request, by changes of calendars and own
/// reminders and, in a long-lived process, at every whole minute. Lists are replaced as a whole and can be
/// read from any thread. Made and destroyed on the main thread; work under way then ends by itself.
class CalendarEventManager {
  public:
    /// Calls on the main queue at `first` and then every `interval` seconds of the wall clock, while what it
    /// gives lives.
    using StartTimer = std::function<std::shared_ptr<void>(platform::Date first, double interval,
                                                           std::function<void()> action)>;
    struct Collaborators {
        platform::EnvironmentRef environment;
        platform::NotificationCenter& center;
        std::shared_ptr<UserSettingsStore> settings;
        std::shared_ptr<EventSettingsStore> eventSettings;
        std::shared_ptr<CustomRemindersStoring> reminders;
        std::shared_ptr<AggregatedEventStore> aggregatedEventStore;
        std::shared_ptr<const VideoConferenceLinkParser> parser;
        std::shared_ptr<const DemoEvents> demoEvents;
        /// A WallClockTimer unless given.
        StartTimer startTimer = {};
    };
    enum class Lifetime { oneShot, longLived };

    CalendarEventManager(Collaborators collaborators, Lifetime lifetime);
    ~CalendarEventManager();
    CalendarEventManager(const CalendarEventManager&) = delete;
    CalendarEventManager& operator=(const CalendarEventManager&) = delete;
    /// Of CoreServices::shared().
    static CalendarEventManager& shared();

    /// Returns when the events are queried; delegate, notification (where wanted) and completion follow on
    /// the main queue, in this order.
    ///
    /// One that is not to be announced may be answered by a reload that is under way or that ended within the
    /// same second, if nothing changed since it began.
    void reloadEvents(bool shouldPostNotification, std::function<void()> completion = {});
    /// Not announced, with these settings in place of the stored ones. The lists stay so until the next
    /// reload.
    void reloadEvents(const ReloadSettings& settings, std::function<void()> completion = {});
    /// After settings, own reminders or choices for events were written, by whatever program: announced,
    /// unless an announced reload knows them, as above.
    void reloadChangedSettings();
    /// What the next reload goes by; the same object as long as nothing was written.
    std::shared_ptr<const ReloadSettings> reloadSettings() const;

    /// All lists of one reload, shared. The lists below are copies.
    std::shared_ptr<const EventLists> lists() const;

    /// Current, scheduled, pending, snoozed past and pending task events, concatenated.
    std::vector<Event> allCachedEvents() const;
    /// Pending, scheduled and pending task events by start.
    std::vector<Event> allCachedUpcomingEvents() const;
    /// Current and snoozed past task events by start.
    std::vector<Event> allCachedCurrentEvents() const;
    std::vector<Event> currentEvents() const;
    std::vector<Event> scheduledEvents() const;
    std::vector<Event> pendingEvents() const;
    std::vector<Event> snoozedPastAppleReminderEvents() const;
    std::vector<Event> pendingAppleReminderEvents() const;
    std::vector<AlertInvocation> invocations() const;
    std::vector<AlertInvocation> snoozedInvocations() const;
    std::optional<Event> cachedEvent(std::string_view id) const;

    bool hasCalendarAccess() const;
    bool hasReminderAccess() const;
    std::optional<std::string> accountEmailForEvent(std::string_view identifier) const;

    /// Neither reloads.
    void activateAllCalendars();
    void activateFirstCalendar();
    /// Both reload and announce; activating an active calendar does nothing.
    void activateCalendar(const std::string& identifier);
    void deactivateCalendar(const std::string& identifier);
    /// Without birthday and subscribed holiday calendars.
    std::vector<UserCalendar> fetchCalendars() const;
    std::vector<UserReminderList> fetchReminderLists() const;

    void didHandleAlertInvocation(const AlertInvocation& invocation);
    /// Moves a stored own reminder; anything else, and one that cannot be stored, gets a snoozed alert.
    void snooze(const Event& event, std::int64_t minutes);
    /// Returns at once; the work and `completion` run on the main queue.
    void snoozeUntilTimeOfEvent(const Event& event, std::function<void()> completion = {});
    void removeSnooze(const Event& event);
    /// Takes over the alerts that another process had snoozed; no reload.
    void restoreSnoozedInvocations(const std::vector<AlertInvocation>& invocations);

    std::shared_ptr<CalendarEventManagerDelegate> delegate() const;
    void setDelegate(std::weak_ptr<CalendarEventManagerDelegate> delegate);

    void debug_printScheduledAlerts() const;
    void debug_printCustomReminders() const;
    /// The minute timer's action.
    void rescheduleTimerFired();

    const AggregatedEventStore& aggregatedEventStore() const;

  private:
    struct State;
    struct Watch;
    std::shared_ptr<State> state_;
    std::unique_ptr<Watch> watch_;
};

}  // namespace hbr
