#include <Setup/AddressTally.h>

#include <CalendarFiles/ContentLine.h>
#include <CalendarFiles/LogicalLines.h>
#include <CalendarFiles/TextDecoding.h>
#include <System/Files.h>
#include <Words/CompanionText.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace hbr {

namespace {

using platform::asciiLower;
using platform::ContentLine;
using platform::equalIgnoringCase;

/// Fewer meetings than this may have the same guests by chance.
constexpr std::size_t enoughMeetings = 5;

std::optional<std::string> personAddress(const ContentLine& line) {
    const std::string kind = platform::asciiUpper(line.parameter("CUTYPE").value_or(""));
    if (kind == "ROOM" || kind == "RESOURCE" || kind == "GROUP") return std::nullopt;
    std::string address(platform::trimmedAscii(line.value));
    if (equalIgnoringCase(std::string_view(address).substr(0, 7), "mailto:")) {
        address.erase(0, 7);
    } else {
        address = line.parameter("EMAIL").value_or("");
    }
    const bool isCalendar = asciiLower(address).ends_with("calendar.google.com");
    return address.find('@') == std::string::npos || isCalendar ? std::nullopt : std::optional(address);
}

/// The meetings of one calendar.
class MeetingTally {
  public:
    void read(const std::filesystem::path& file) {
        std::error_code error;
        const auto content = platform::readRegularFile(file, error);
        if (!content) return;
        const std::string text = platform::withoutUtf16(*content);
        platform::LogicalLines lines(text);
        bool isEvent = false;
        std::string identifier;
        std::set<std::string> people;
        while (lines.next()) {
            const auto line = ContentLine::parse(lines.line());
            if (!line) continue;
            if (line->is("BEGIN") && equalIgnoringCase(line->value, "VEVENT")) {
                isEvent = true;
                people.clear();
                identifier = file.string() + std::to_string(lines.number());
            } else if (line->is("END") && equalIgnoringCase(line->value, "VEVENT")) {
                isEvent = false;
                peopleOf_[identifier].merge(people);
            } else if (isEvent && line->is("UID")) {
                identifier = line->value;
            } else if (isEvent && (line->is("ATTENDEE") || line->is("ORGANIZER"))) {
                if (auto address = personAddress(*line)) {
                    people.insert(asciiLower(*address));
                    spelling_.try_emplace(asciiLower(*address), *address);
                }
            }
        }
    }

    std::vector<AddressCandidate> candidates(const std::string& calendarName) const {
        std::map<std::string, std::size_t> counts;
        std::size_t all = 0;
        for (const auto& [identifier, people] : peopleOf_) {
            if (people.size() < 2) continue;
            ++all;
            for (const auto& address : people)
                ++counts[address];
        }
        std::vector<AddressCandidate> found;
        for (const auto& [address, count] : counts) {
            if (count * 2 > all) found.push_back({spelling_.at(address), count, all, false});
        }
        const auto named = std::find_if(found.begin(), found.end(), [&](const AddressCandidate& one) {
            return equalIgnoringCase(one.address, calendarName);
        });
        if (named != found.end()) found = {AddressCandidate(*named)};
        std::stable_sort(found.begin(), found.end(),
                         [](const auto& a, const auto& b) { return a.meetings > b.meetings; });
        if (found.size() == 1) found.front().isSure = found.front().meetings >= enoughMeetings;
        return found;
    }

  private:
    /// By UID; addresses in lower case.
    std::map<std::string, std::set<std::string>> peopleOf_;
    std::map<std::string, std::string> spelling_;
};

}  // namespace

std::vector<AddressCandidate> addressCandidates(const std::vector<platform::FoundCollection>& calendars) {
    std::vector<AddressCandidate> all;
    for (const auto& calendar : calendars) {
        MeetingTally tally;
        for (const auto& file : calendar.files)
            tally.read(file);
        for (const auto& candidate : tally.candidates(calendar.location.filename().string()))
            addCandidate(all, candidate);
    }
    return all;
}

void addCandidate(std::vector<AddressCandidate>& candidates, const AddressCandidate& more) {
    const auto rank = [](const AddressCandidate& one) { return std::pair(!one.isSure, ~one.meetings); };
    const auto there = std::find_if(candidates.begin(), candidates.end(), [&](const AddressCandidate& one) {
        return equalIgnoringCase(one.address, more.address);
    });
    if (there == candidates.end()) {
        candidates.push_back(more);
    } else if (rank(more) < rank(*there)) {
        *there = more;
    }
    std::ranges::stable_sort(candidates, {}, rank);
}

std::string shareText(const platform::Environment& environment, const AddressCandidate& candidate) {
    return companionText(
        environment, "Setup.share",
        {static_cast<std::int64_t>(candidate.allMeetings), static_cast<std::int64_t>(candidate.meetings)});
}

}  // namespace hbr
