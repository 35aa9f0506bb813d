#include "ZoneReader.h"

#include "ItemLimits.h"

namespace platform {

void ZoneReader::beginPart(std::string_view name, bool isObservance) {
    zones_.back().text.append("BEGIN:").append(asciiUpper(name)).append("\n");
    if (isObservance) zones_.back().observances.emplace_back();
}

void ZoneReader::readLine(const ContentLine& line) {
    auto& zone = zones_.back();
    if (line.is("TZID")) zone.tzid = unescapedText(trimmedAscii(line.value));
    if (line.is("X-LIC-LOCATION")) zone.location = trimmedAscii(line.value);
}

void ZoneReader::readObservanceLine(const ContentLine& line) {
    if (zones_.back().observances.empty()) return;
    auto& observance = zones_.back().observances.back();
    if (line.is("RRULE") && ++rules_ > limits::zoneRules) {
        if (rules_ == limits::zoneRules + 1)
            problems_.report("more than " +
                             counted(limits::zoneRules, "rules of time zones; the rest is left out"));
        return;
    }
    if (line.is("DTSTART")) observance.start = parseWrittenTime(line.value);
    if (line.is("TZOFFSETFROM")) observance.offsetFrom = parseUtcOffset(line.value);
    if (line.is("TZOFFSETTO")) observance.offsetTo = parseUtcOffset(line.value);
    if (line.is("RRULE")) observance.rules.emplace_back(line.value);
    if (line.is("RDATE")) {
        for (const auto piece : commaSeparated(line.value)) {
            if (const auto date = parseWrittenTime(piece)) observance.dates.push_back(*date);
        }
    }
}

}  // namespace platform
