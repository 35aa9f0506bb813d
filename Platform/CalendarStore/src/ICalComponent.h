#pragma once

#include "ItemDetails.h"

#include <libical/ical.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

struct ICalComponentFree {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using ICalComponentPtr = std::unique_ptr<icalcomponent, ICalComponentFree>;

/// Never ends the process on a parse error, as the library's default may.
ICalComponentPtr parseComponent(const std::string& text);
std::optional<std::string> optionalText(const char* text);
/// The value as written, still escaped.
std::string rawValue(icalproperty* property);

void readParticipants(icalcomponent* component, const std::vector<std::string>& ownAddresses,
                      ItemDetails& details);
void readAlarms(icalcomponent* component, const TimeZone& zone, ItemDetails& details);

}  // namespace platform
