#pragma once

#include <CalendarStore/EKEventStore.h>
#include <ContactStore/CNContactStore.h>
#include <Values/JsonValue.h>

#include <string_view>
#include <vector>

namespace hbr {

/// name, location, addresses, isDelegate, kind, readable, problem, collections (location, calendar, taskList,
/// files, events, tasks).
platform::JsonValue accountJson(const platform::AccountReport& report);

/// An array of name, location, readable, problem, files, contacts.
platform::JsonValue contactsJson(const std::vector<platform::ContactSourceReport>& reports);

std::string_view kindName(platform::Account::Kind kind);

}  // namespace hbr
