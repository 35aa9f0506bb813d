#include "ItemReader.h"

#include "ItemLimits.h"

#include <TimeAndText/ShortenedText.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace platform {
namespace {

/// Of a value that a diagnostic names.
constexpr std::size_t shownBytes = 40;

/// Lines that the records are made of later; everything else (attachments, formatted copies of the notes) is
/// dropped with the file's bytes.
bool isKept(std::string_view name) {
    static constexpr std::array<std::string_view, 12> names = {"SUMMARY",
                                                               "LOCATION",
                                                               "DESCRIPTION",
                                                               "URL",
                                                               "CONFERENCE",
                                                               "STATUS",
                                                               "ATTENDEE",
                                                               "ORGANIZER",
                                                               "COMPLETED",
                                                               "PERCENT-COMPLETE",
                                                               "X-GOOGLE-CONFERENCE",
                                                               "X-APPLE-TRAVEL-DURATION"};
    return std::find(names.begin(), names.end(), name) != names.end() || name.starts_with("X-MICROSOFT-");
}

int integerOr(std::string_view text, int fallback) {
    text = trimmedAscii(text);
    int value = fallback;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

bool isTimeName(std::string_view name) {
    return name == "DTSTART" || name == "DTEND" || name == "DUE" || name == "RECURRENCE-ID" ||
           name == "EXDATE" || name == "RDATE";
}

bool spansMidnights(const ScannedItem& item) {
    const auto isMidnight = [](const WrittenTime& time) { return secondsOf(time.local) % 86400 == 0; };
    return item.start && !item.start->isDate && isMidnight(*item.start) && item.end && !item.end->isDate &&
           isMidnight(*item.end) && item.end->local > item.start->local;
}

/// A line of times whose zone is named with a colon but without quotes ("TZID=(UTC+01:00) Berlin:2026…"):
/// times have no colons, so the last one is meant.
ContentLine withUnquotedColon(const ContentLine& line) {
    const auto colon = line.value.rfind(':');
    if (colon == std::string_view::npos || line.parameters.empty()) return line;
    const auto rest = line.value.substr(colon + 1);
    if (!parseWrittenTime(rest.substr(0, rest.find_first_of(",/")))) return line;
    const auto* begin = line.parameters.data();
    return {line.name, std::string_view(begin, static_cast<std::size_t>(rest.data() - 1 - begin)), rest};
}

}  // namespace

ItemReader::Current::Current(ScannedItem::Kind kind, int line) {
    item.kind = kind;
    item.line = line;
    item.text = kind == ScannedItem::Kind::event ? "BEGIN:VEVENT\r\n" : "BEGIN:VTODO\r\n";
}

void ItemReader::begin(ScannedItem::Kind kind) {
    current_.emplace(kind, problems_.line());
}

std::optional<ScannedItem> ItemReader::end() {
    auto read = std::exchange(current_, std::nullopt).value();
    auto& item = read.item;
    const bool isEvent = item.kind == ScannedItem::Kind::event;
    item.text += isEvent ? "END:VEVENT\r\n" : "END:VTODO\r\n";
    if (isEvent && !item.start && read.bad.empty()) read.bad = "event without DTSTART";
    if (!read.bad.empty()) {
        problems_.setLine(item.line);
        problems_.report(read.bad + "; left out", item.uid);
        return std::nullopt;
    }
    if (item.modified.empty()) item.modified = std::move(read.stamp);
    item.wholeDays = read.isMarkedAllDay && spansMidnights(item);
    return std::move(item);
}

void ItemReader::beginAlarm() {
    current_->item.text += "BEGIN:VALARM\r\n";
}

void ItemReader::readAlarmLine(const ContentLine& line, std::string_view raw) {
    if (line.is("ACTION") || line.is("TRIGGER")) keep(line, raw);
}

void ItemReader::endAlarm() {
    current_->item.text += "END:VALARM\r\n";
}

void ItemReader::readLine(const ContentLine& written, std::string_view raw) {
    const auto name = asciiUpper(written.name);
    const auto line = written.value.find(':') != std::string_view::npos && isTimeName(name)
                          ? withUnquotedColon(written)
                          : written;
    auto& item = current_->item;
    const bool isEvent = item.kind == ScannedItem::Kind::event;
    if (name == "UID") {
        item.uid = trimmedAscii(line.value);
    } else if (name == "SEQUENCE") {
        item.sequence = integerOr(line.value, 0);
    } else if (name == "LAST-MODIFIED") {
        item.modified = asciiUpper(trimmedAscii(line.value));
    } else if (name == "DTSTAMP") {
        current_->stamp = asciiUpper(trimmedAscii(line.value));
    } else if (name == "DTSTART") {
        item.start = time(line, name, isEvent);
    } else if (name == (isEvent ? "DTEND" : "DUE")) {
        item.end = time(line, name, false);
    } else if (name == "DURATION") {
        item.duration = parseDuration(line.value);
        if (!item.duration)
            problems_.report("wrong duration \"" + shortened(line.value, shownBytes) + "\" left out", name);
    } else if (name == "RECURRENCE-ID") {
        item.recurrenceId = time(line, name, true);
        const auto range = line.parameter("RANGE");
        item.thisAndFuture = range && equalIgnoringCase(*range, "THISANDFUTURE");
    } else if (name == "RRULE") {
        addRule(recurrence().rules, line, name);
    } else if (name == "EXRULE") {
        addRule(recurrence().exclusionRules, line, name);
    } else if (name == "RDATE") {
        readDates(line);
    } else if (name == "EXDATE") {
        readExclusions(line);
    } else if (name == "X-MICROSOFT-CDO-ALLDAYEVENT") {
        current_->isMarkedAllDay = equalIgnoringCase(trimmedAscii(line.value), "TRUE");
    } else if (isKept(name)) {
        keep(written, raw);
        if (isEvent) return;
        item.completed = item.completed || name == "COMPLETED" ||
                         (name == "STATUS" && equalIgnoringCase(trimmedAscii(line.value), "COMPLETED")) ||
                         (name == "PERCENT-COMPLETE" && integerOr(line.value, 0) >= 100);
    }
}

void ItemReader::keep(const ContentLine& line, std::string_view raw) {
    const bool isLong = line.parameters.size() > limits::parameterBytes;
    const auto text = isLong ? withoutOtherParameters(line) : std::string();
    if (isLong) raw = text;
    auto& kept = current_->item.text;
    if (++current_->keptLines > limits::lines || kept.size() + raw.size() > limits::textBytes) {
        if (std::exchange(current_->hasTooMuchText, true)) return;
        return problems_.report("more text than an item may have (" +
                                    std::to_string(limits::textBytes >> 20U) + " MB, " +
                                    counted(limits::lines, "lines); the rest is left out"),
                                current_->item.uid);
    }
    kept.append(raw).append("\r\n");
}

/// Parameters that a record is made of; the others can be whole documents (ALTREP).
std::string ItemReader::withoutOtherParameters(const ContentLine& line) {
    std::string text(line.name);
    for (const auto* name : {"CN", "EMAIL", "PARTSTAT", "ROLE", "RELATED", "VALUE"}) {
        const auto value = line.parameter(name);
        if (!value) continue;
        if (value->size() > limits::parameterBytes) {
            problems_.report(
                std::string(name) + " longer than " + counted(limits::parameterBytes, "bytes left out"),
                std::string(line.name));
            continue;
        }
        const auto* quote = value->find_first_of(",;:") != std::string::npos ? "\"" : "";
        text.append(";").append(name).append("=").append(quote);
        for (const char c : *value)
            text += c == '"' ? std::string("^'") : c == '\n' ? "^n" : c == '^' ? "^^" : std::string(1, c);
        text += quote;
    }
    return text.append(":").append(line.value);
}

void ItemReader::addRule(std::vector<std::string>& rules, const ContentLine& line, std::string_view name) {
    const auto& all = recurrence();
    if (line.value.size() > limits::ruleBytes)
        return problems_.report("rule longer than " + counted(limits::ruleBytes, "bytes left out"), name);
    if (all.rules.size() + all.exclusionRules.size() >= limits::rules) {
        if (std::exchange(current_->hasTooManyRules, true)) return;
        return problems_.report("more than " + counted(limits::rules, "rules; the rest is left out"),
                                current_->item.uid);
    }
    rules.emplace_back(line.value);
}

bool ItemReader::hasRoomForDate(std::string_view name) {
    const auto& all = recurrence();
    if (all.dates.size() + all.exclusions.size() < limits::dates) return true;
    if (!std::exchange(current_->hasTooManyDates, true))
        problems_.report("more than " + counted(limits::dates, "dates in RDATE and EXDATE; the rest of ") +
                             std::string(name) + " is left out",
                         current_->item.uid);
    return false;
}

TimeParameters ItemReader::timeParameters(const ContentLine& line) {
    TimeParameters parameters;
    if (line.parameters.empty()) return parameters;
    const auto kind = line.parameter("VALUE");
    parameters.isDate = kind && equalIgnoringCase(*kind, "DATE");
    if (auto tzid = line.parameter("TZID"); tzid && !tzid->empty()) {
        if (tzid->size() > limits::zoneNameBytes) tzid = shortened(*tzid, limits::zoneNameBytes);
        if (!lastTzid_ || *lastTzid_ != *tzid)
            lastTzid_ = std::make_shared<const std::string>(std::move(*tzid));
        parameters.tzid = lastTzid_;
    }
    return parameters;
}

std::optional<WrittenTime> ItemReader::time(const ContentLine& line, std::string_view name, bool needed) {
    return time(line.value, timeParameters(line), name, needed);
}

std::optional<WrittenTime> ItemReader::time(std::string_view value, const TimeParameters& parameters,
                                            std::string_view name, bool needed) {
    auto result = parseWrittenTime(value, parameters);
    if (result) return result;
    const auto reason = "wrong time \"" + shortened(value, shownBytes) + "\" in " + std::string(name);
    if (needed) {
        current_->bad =
            (current_->item.kind == ScannedItem::Kind::event ? "event with a " : "task with a ") + reason;
    } else {
        problems_.report(reason + " left out", current_->item.uid);
    }
    return std::nullopt;
}

void ItemReader::readDates(const ContentLine& line) {
    const auto parameters = timeParameters(line);
    for (const auto piece : commaSeparated(line.value)) {
        const auto slash = piece.find('/');
        if (trimmedAscii(piece).empty()) continue;
        if (!hasRoomForDate("RDATE")) break;
        auto start = time(piece.substr(0, slash), parameters, "RDATE", false);
        if (!start) continue;
        WrittenPeriod period{std::move(*start), {}, {}};
        if (slash != std::string_view::npos) {
            const auto rest = trimmedAscii(piece.substr(slash + 1));
            if (rest.find_first_of("Pp") != std::string_view::npos) {
                period.duration = parseDuration(rest);
            } else {
                period.end = parseWrittenTime(rest, parameters);
            }
        }
        recurrence().dates.push_back(std::move(period));
    }
}

void ItemReader::readExclusions(const ContentLine& line) {
    const auto parameters = timeParameters(line);
    for (const auto piece : commaSeparated(line.value)) {
        if (trimmedAscii(piece).empty()) continue;
        if (!hasRoomForDate("EXDATE")) break;
        if (auto excluded = time(piece, parameters, "EXDATE", false))
            recurrence().exclusions.push_back(std::move(*excluded));
    }
}

WrittenRecurrence& ItemReader::recurrence() {
    if (!current_->item.recurrence) current_->item.recurrence = std::make_unique<WrittenRecurrence>();
    return *current_->item.recurrence;
}

}  // namespace platform
