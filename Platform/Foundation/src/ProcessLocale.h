#pragma once

#include <Foundation/Locale.h>

#include <functional>
#include <string>
#include <string_view>

namespace platform {

/// Gives the value of an environment variable, "" when it is not set.
using VariableLookup = std::function<std::string(const char* name)>;

/// Texts by LANGUAGE, else LC_ALL, LC_MESSAGES, LANG; formats by LC_ALL, LC_TIME, LANG. C and POSIX mean
/// en_US.
Locale processLocale(const VariableLookup& variable);

}  // namespace platform
