#include <Words/EventMatch.h>

#include <TimeAndText/Normalization.h>
#include <TimeAndText/Text.h>

#include <HbrCore/Events/EventLookup.h>
#include <algorithm>
#include <string>

namespace hbr {

namespace {

std::string folded(std::string_view text) {
    return platform::canonicallyComposed(platform::lowercased(platform::trimmed(text)));
}

template <class Matches>
std::vector<Event> oneOfEachSeries(const std::vector<Event>& candidates, platform::Date now,
                                   const Matches& matches) {
    std::vector<Event> found;
    for (const auto& event : candidates) {
        if (!matches(event)) continue;
        const auto same = std::find_if(found.begin(), found.end(),
                                       [&](const Event& other) { return other.id == event.id; });
        if (same == found.end()) {
            found.push_back(event);
        } else if (isNearer(event, *same, now)) {
            *same = event;
        }
    }
    return found;
}

}  // namespace

std::vector<Event> matchingEvents(const std::vector<Event>& candidates, std::string_view wanted,
                                  platform::Date now) {
    const std::string text = folded(wanted);
    if (text.empty()) return {};
    const auto title = [](const Event& event) { return folded(event.title.value_or("")); };
    auto found = oneOfEachSeries(candidates, now, [&](const Event& event) { return event.id == wanted; });
    if (found.empty()) {
        found = oneOfEachSeries(candidates, now, [&](const Event& event) { return title(event) == text; });
    }
    if (found.empty()) {
        found = oneOfEachSeries(candidates, now, [&](const Event& event) {
            return event.id.starts_with(wanted) || title(event).find(text) != std::string::npos;
        });
    }
    return found;
}

}  // namespace hbr
