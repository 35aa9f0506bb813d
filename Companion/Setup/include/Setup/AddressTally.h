#pragma once

#include <CalendarFiles/CollectionDiscovery.h>
#include <System/Environment.h>

#include <cstddef>
#include <string>
#include <vector>

namespace hbr {

/// An address that takes part in most meetings of a calendar.
struct AddressCandidate {
    std::string address = {};
    /// The number it takes part in, and the number of all meetings of the calendar. A series is one meeting.
    std::size_t meetings = 0;
    std::size_t allMeetings = 0;
    /// Nobody else takes part in most of them, and there are enough meetings to be sure.
    bool isSure = false;
};

/// Likely owners of the calendars: for each calendar the addresses that are attendee or organizer in more
/// than half of its meetings, most frequent first. Each address is listed once, for the calendar that says
/// most about it. A meeting is an event with at least two people; rooms and calendars with an address of
/// their own are not people. A calendar whose name is an address belongs to that address.
std::vector<AddressCandidate> addressCandidates(const std::vector<platform::FoundCollection>& calendars);

/// Adds an address, or merges it with the same one in the list; sure ones first, then by meetings.
void addCandidate(std::vector<AddressCandidate>& candidates, const AddressCandidate& more);

/// "in 27 of 31 meetings".
std::string shareText(const platform::Environment& environment, const AddressCandidate& candidate);

}  // namespace hbr
