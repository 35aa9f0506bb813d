#pragma once

#include <CalendarStore/EKCalendarItem.h>
#include <HbrCore/CoreServices.h>
#include <HbrCore/Events/Reminder.h>
#include <HbrCore/Explanation/EventExplanation.h>

#include <memory>
#include <set>
#include <string>
#include <variant>

namespace hbr {

/// Something that could be listed: one occurrence of an event, a task, an own reminder.
using ListableItem = std::variant<platform::EKEventRef, platform::EKReminderRef, Reminder>;

/// Says why an item is listed or not, by the very rules of a reload. Settings, rules and the clock are those
/// of the moment when it was made.
class EventExplainer {
  public:
    /// `decided`: identifiers of the calendars and lists that the user has decided about; what is neither
    /// watched nor among them is called new.
    EventExplainer(const CoreServices& core, std::set<std::string> decided);
    ~EventExplainer();
    EventExplainer(const EventExplainer&) = delete;
    EventExplainer& operator=(const EventExplainer&) = delete;

    EventExplanation explain(const ListableItem& item) const;

  private:
    struct State;
    std::unique_ptr<const State> state_;
};

}  // namespace hbr
