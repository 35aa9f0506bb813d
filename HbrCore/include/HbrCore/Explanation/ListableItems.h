#pragma once

#include <HbrCore/CoreServices.h>
#include <HbrCore/Explanation/EventExplainer.h>

#include <limits>
#include <vector>

namespace hbr {

/// Everything that could be listed in [from, to), watched or not: events that touch it, tasks that are due in
/// it, own reminders; by start. Not to be called on a store's own thread.
std::vector<ListableItem> listableItems(const CoreServices& core, platform::Date from, platform::Date to);

/// The tasks of every list that are never due.
std::vector<ListableItem> undatedTasks(const CoreServices& core);

/// Where an undated task stands.
inline constexpr platform::Date undated{std::numeric_limits<double>::lowest()};

/// What is needed to find and to sort an item: id, type, title, calendar's name, start and end.
Event outlineOf(const ListableItem& item);

}  // namespace hbr
