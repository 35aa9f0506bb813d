#pragma once

#include <CalendarStore/EKEnums.h>
#include <Values/Color.h>

#include <memory>
#include <string>
#include <vector>

namespace platform {

/// An account as calendars see it.
struct EKSource {
    std::string title;
    bool isDelegate = false;
    /// "mailto:" + address, in the order of the accounts file.
    std::vector<std::string> ownerAddresses;

    friend bool operator==(const EKSource&, const EKSource&) = default;
};

/// A calendar or a task list. Identifiers use [0-9a-z-] and are stable across runs.
struct EKCalendar {
    std::string calendarIdentifier;
    std::string title;
    Color color;
    EKCalendarType type = EKCalendarType::local;
    EKEntityType entityType = EKEntityType::event;
    bool isSubscribedHolidayCalendar = false;
    std::shared_ptr<const EKSource> source;
};

using EKCalendarRef = std::shared_ptr<const EKCalendar>;

}  // namespace platform
