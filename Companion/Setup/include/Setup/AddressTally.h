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
    /// In which it takes part, of all that the calendar has. A series counts once.
    std::size_t meetings = 0;
    std::size_t allMeetings = 0;
    /// Nobody else takes part in most of them, and they are enough to be sure.
    bool isSure = false;
};

/// Whose calendars they may be: for each calendar the addresses that are attendee or organizer in more than
/// half of its meetings, most frequent first; an address stands once, by the calendar that says most. A
/// meeting is an event with at least two people; rooms and calendars that have an address of their own are
/// nobody. A calendar that is called like an address says it plainly.
std::vector<AddressCandidate> addressCandidates(const std::vector<platform::FoundCollection>& calendars);

/// Adds one, or what it says more of an address that is there; the sure ones come first, then by meetings.
void addCandidate(std::vector<AddressCandidate>& candidates, const AddressCandidate& more);

/// "in 27 of 31 meetings".
std::string shareText(const platform::Environment& environment, const AddressCandidate& candidate);

}  // namespace hbr
