#pragma once

#include <System/DesktopClock.h>
#include <TimeAndText/Locale.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Gives the value of an environment variable, "" when it is not set.
using VariableLookup = std::function<std::string(const char* name)>;

/// Called once, when the desktop's choice is used.
using HourCycleLookup = std::function<std::optional<HourCycle>()>;

/// Texts by LANGUAGE, else LC_ALL, LC_MESSAGES, LANG; formats by LC_ALL, LC_TIME, LANG. C and POSIX mean
/// en_US. The desktop's clock decides between 12 and 24 hours even where LC_TIME is set, for desktops set
/// that for everyone who chose a region; LC_ALL sets it for one command and comes first.
Locale processLocale(const VariableLookup& variable, const HourCycleLookup& desktopClock);

}  // namespace platform
