#pragma once

#include <CalendarStore/EKAlarm.h>
#include <CalendarStore/EKCalendar.h>
#include <CalendarStore/EKParticipant.h>
#include <TimeAndText/Calendar.h>
#include <TimeAndText/Date.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform {

/// A property read by its name: nothing, a text, a moment or a number.
using EKPropertyValue = std::variant<std::monostate, std::string, Date, double>;

/// What events and tasks share. Texts are as the source gives them, unescaped, not trimmed.
struct EKCalendarItem {
    std::string calendarItemIdentifier;
    /// The iCalendar UID; empty when the item has none.
    std::string calendarItemExternalIdentifier;
    EKCalendarRef calendar;
    std::optional<std::string> title;
    std::optional<std::string> location;
    std::optional<std::string> notes;
    /// The address under which the item or its call is found.
    std::optional<std::string> url;
    bool hasRecurrenceRules = false;
    /// Absent and empty differ: see each item's rule for having alarms.
    std::optional<std::vector<EKAlarm>> alarms;
};

/// One occurrence of an event.
struct EKEvent : EKCalendarItem {
    /// The same for all occurrences of a series; equals calendarItemIdentifier.
    std::string eventIdentifier;
    Date startDate;
    /// Never before startDate. An all-day event ends at the next day's midnight in the user's zone.
    Date endDate;
    bool isAllDay = false;
    /// Changed by itself, apart from its series.
    bool isDetached = false;
    /// Absent for an event that does not recur; else this occurrence's start after any change.
    std::optional<Date> occurrenceDate;
    /// The start that the series gives this occurrence; absent for an event that does not recur.
    std::optional<Date> originalStart;
    EKEventStatus status = EKEventStatus::none;
    std::optional<EKParticipant> organizer;
    /// Absent when the event has no attendees.
    std::optional<std::vector<EKParticipant>> attendees;
    /// Seconds.
    std::optional<double> travelTime;

    /// "title", "notes", "location", "startDate", "endDate", "travelTime".
    EKPropertyValue value(std::string_view key) const;
};

/// A task. `dueDate` is the moment of the due components in the user's zone.
struct EKReminder : EKCalendarItem {
    bool isCompleted = false;
    std::optional<DateComponents> startDateComponents;
    /// Without hours when only a date is due.
    std::optional<DateComponents> dueDateComponents;
    std::optional<Date> dueDate;

    /// "title", "notes", "location", "dueDate".
    EKPropertyValue value(std::string_view key) const;
};

using EKEventRef = std::shared_ptr<const EKEvent>;
using EKReminderRef = std::shared_ptr<const EKReminder>;

}  // namespace platform
