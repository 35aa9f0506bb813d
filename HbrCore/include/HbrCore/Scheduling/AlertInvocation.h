#pragma once

#include <HbrCore/Events/Event.h>
#include <TimeAndText/Date.h>

#include <cstddef>
#include <functional>
#include <string>

namespace hbr {

/// An alert still to come.
struct AlertInvocation {
    platform::Date date;
    Event event;
    bool isSnooze = false;

    /// The event's id, ".", the date in seconds since 1970.
    std::string id() const;
    std::string debugDescription() const;

    friend bool operator==(const AlertInvocation&, const AlertInvocation&) = default;
};

}  // namespace hbr

template <>
struct std::hash<hbr::AlertInvocation> {
    std::size_t operator()(const hbr::AlertInvocation& invocation) const noexcept;
};
