#pragma once

#include <HbrCore/Events/EventRef.h>
#include <TimeAndText/Date.h>

#include <cstddef>
#include <functional>
#include <string>

namespace hbr {

/// An alert still to come. Its event is never null and is shared with the lists; equal events make equal
/// alerts.
struct AlertInvocation {
    platform::Date date;
    EventRef event;
    bool isSnooze = false;

    /// The event's id, ".", the date in seconds since 1970.
    std::string id() const { return idOf(*event, date); }
    static std::string idOf(const Event& event, platform::Date date);
    std::string debugDescription() const;

    friend bool operator==(const AlertInvocation& a, const AlertInvocation& b) {
        return a.date == b.date && a.isSnooze == b.isSnooze && (a.event == b.event || *a.event == *b.event);
    }
};

}  // namespace hbr

template <>
struct std::hash<hbr::AlertInvocation> {
    std::size_t operator()(const hbr::AlertInvocation& invocation) const noexcept;
};
