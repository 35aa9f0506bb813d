#pragma once

#include <CalendarStore/CalendarSources.h>
#include <CalendarStore/EKCalendarItem.h>
#include <System/Environment.h>
#include <System/NotificationCenter.h>

#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Posted from the store's worker thread after the new state is in place.
inline constexpr std::string_view eventStoreChangedNotification = "EKEventStoreChanged";

/// What to ask for; made by the store's predicate operations. Calendars that the store does not know are
/// skipped; without calendars there is no query.
struct EKPredicate {
    EKEntityType entityType = EKEntityType::event;
    Date start;
    Date end;
    std::vector<EKCalendarRef> calendars;
    /// Of tasks: completed ones and those without a due date too, whatever the interval.
    bool wantsEveryTask = false;
};

/// What `doctor` reports about one collection.
struct CollectionReport {
    std::string account;
    std::filesystem::path location;
    EKCalendarRef events;
    EKCalendarRef reminders;
    std::size_t files = 0;
    std::size_t eventCount = 0;
    std::size_t reminderCount = 0;
};

struct AccountReport {
    Account account;
    bool readable = false;
    /// Why it cannot be read; empty when it can.
    std::string problem;
    std::vector<CollectionReport> collections;
};

/// Calendars, events and tasks of the accounts that its sources list. A text is scanned once
/// and again only when it changed; items are parsed when an interval touches them, so a query costs what
/// it returns. All operations are safe from any thread. Every item of a calendar that cannot be read is
/// skipped alone, with a diagnostic (file, line, reason) in the environment's sink.
///
/// An interval touches an event when start <= its end and end >= its start. Events are ordered by start,
/// calendar identifier, event identifier.
class EKEventStore {
  public:
    /// The user's own (not delegated) accounts of the sources.
    EKEventStore(EnvironmentRef environment, NotificationCenter& center, CalendarSourcesRef sources);
    /// Only the accounts that `delegates` name, as `delegateSources()` of another store gives them.
    EKEventStore(EnvironmentRef environment, NotificationCenter& center, CalendarSourcesRef sources,
                 std::vector<std::shared_ptr<const EKSource>> delegates);
    ~EKEventStore();
    EKEventStore(const EKEventStore&) = delete;
    EKEventStore& operator=(const EKEventStore&) = delete;

    /// Full when at least one calendar account can be read (a delegated one too: access is what makes a store
    /// of delegates possible), denied when there are some and none can, not determined when there is none.
    EKAuthorizationStatus authorizationStatus(EKEntityType type) const;
    using AccessCompletion = std::function<void(bool granted, std::exception_ptr error)>;
    /// Reads the accounts again, and what is in them where the accounts changed or none could be read; then
    /// completes (on the calling thread).
    void requestFullAccessToEvents(const AccessCompletion& completion);
    void requestFullAccessToReminders(const AccessCompletion& completion);
    void requestAccess(EKEntityType type, const AccessCompletion& completion);
    /// Looks for changed texts and accounts on the calling thread; posts the change notification when there
    /// are some.
    void refreshSourcesIfNecessary();
    /// Watches the sources from now on and posts the change notification; long-lived
    /// processes only.
    void startWatching();

    std::vector<std::shared_ptr<const EKSource>> delegateSources() const;
    std::vector<EKCalendarRef> calendars(EKEntityType type) const;
    EKCalendarRef calendarWithIdentifier(std::string_view identifier) const;
    /// The first occurrence; nullptr when there is none.
    EKEventRef eventWithIdentifier(std::string_view identifier) const;
    /// A recurring task is listed at its next open due, from the environment's clock on.
    EKReminderRef reminderWithIdentifier(std::string_view identifier) const;

    EKPredicate predicateForEvents(Date start, Date end, std::vector<EKCalendarRef> calendars) const;
    std::vector<EKEventRef> events(const EKPredicate& predicate) const;
    EKPredicate predicateForIncompleteReminders(Date dueStart, Date dueEnd,
                                                std::vector<EKCalendarRef> calendars) const;
    /// Every task, completed or not, due or not.
    EKPredicate predicateForReminders(std::vector<EKCalendarRef> calendars) const;
    /// By due date, those without one last. Completes on the store's worker thread.
    void fetchReminders(const EKPredicate& predicate,
                        std::function<void(std::vector<EKReminderRef>)> completion) const;

    std::vector<AccountReport> report() const;

    /// Another number after every change of what the store answers, before the change is announced. The first
    /// reading does not change it.
    std::uint64_t revision() const;

  private:
    struct State;
    std::shared_ptr<State> state_;
};

}  // namespace platform
