#pragma once

#include <CalendarStore/EKEventStore.h>
#include <Foundation/Json.h>

namespace hbr {

/// name, location, addresses, isDelegate, kind, readable, problem, collections (location, calendar,
/// taskList, files, events, tasks).
platform::JsonValue accountJson(const platform::AccountReport& report);

std::string_view kindName(platform::Account::Kind kind);

}  // namespace hbr
