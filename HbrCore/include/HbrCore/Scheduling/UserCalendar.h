#pragma once

#include <Values/Color.h>

#include <string>

namespace hbr {

/// A calendar as a choice for the user.
struct UserCalendar {
    std::string identifier;
    std::string name;
    platform::Color color;
    bool active = false;
    std::string accountName;
    bool isDelegate = false;

    friend bool operator==(const UserCalendar&, const UserCalendar&) = default;
};

/// A task list as a choice for the user.
struct UserReminderList {
    std::string identifier;
    std::string name;
    platform::Color color;
    bool active = false;
    std::string accountName;

    friend bool operator==(const UserReminderList&, const UserReminderList&) = default;
};

}  // namespace hbr
