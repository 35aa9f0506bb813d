#include "ItemScanner.h"

#include "ItemLimits.h"

#include <Foundation/LogicalLines.h>
#include <Foundation/ShortenedText.h>
#include <Foundation/TextDecoding.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <utility>

namespace platform {
namespace {

/// Deeper components are passed over; calendars nest three levels.
constexpr std::size_t maximumDepth = 16;
/// Problems of one file that are told one by one.
/// Of a value that a diagnostic names.
constexpr std::size_t shownBytes = 40;

enum class Component { calendar, event, task, alarm, zone, observance, other };

Component componentNamed(std::string_view name) {
    if (equalIgnoringCase(name, "VCALENDAR")) return Component::calendar;
    if (equalIgnoringCase(name, "VEVENT")) return Component::event;
    if (equalIgnoringCase(name, "VTODO")) return Component::task;
    if (equalIgnoringCase(name, "VALARM")) return Component::alarm;
    if (equalIgnoringCase(name, "VTIMEZONE")) return Component::zone;
    if (equalIgnoringCase(name, "STANDARD") || equalIgnoringCase(name, "DAYLIGHT"))
        return Component::observance;
    return Component::other;
}

/// Lines that the records are made of later; everything else (attachments, formatted copies of the notes)
/// is dropped with the file's bytes.
bool isKept(std::string_view name, bool inAlarm) {
    if (inAlarm) return name == "ACTION" || name == "TRIGGER";
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

/// TEXT escapes taken away.
std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) {
            ++i;
            result += text[i] == 'n' || text[i] == 'N' ? '\n' : text[i];
        } else {
            result += text[i];
        }
    }
    return result;
}

std::string counted(std::size_t number, std::string_view unit) {
    auto digits = std::to_string(number);
    for (auto at = static_cast<int>(digits.size()) - 3; at > 0; at -= 3)
        digits.insert(static_cast<std::size_t>(at), ",");
    return digits + " " + std::string(unit);
}

class Scanner {
  public:
    Scanner(ScannedFile& file, DiagnosticsSink& diagnostics) : file_(file), diagnostics_(diagnostics) {}

    void scan(std::string_view text) {
        LogicalLines lines(text);
        while (!hasTooManyItems_ && lines.next()) {
            line_ = lines.number();
            if (lines.line().empty()) continue;
            if (lines.tooLong()) {
                tell("line longer than " + std::to_string(LogicalLines::maximumLength / 1024) +
                     " KB left out");
                continue;
            }
            read(lines.line());
        }
        if (hasTooManyItems_) {
            line_ = 0;
            file_.items.clear();
            tell("more than " + counted(limits::items, "events and tasks; the file is not used"));
            return;
        }
        if (!open_.empty() || skippedDepth_ > 0) {
            tell("the file ends inside a component");
            // A file that was cut off still shows what it has.
            while (!open_.empty())
                end(open_.back());
        }
        if (!sawCalendar_) {
            line_ = 0;
            tell("no calendar in this file");
        }
        if (told_ > limits::problems) {
            const auto more = std::to_string(told_ - limits::problems) + " more problems in this file";
            diagnostics_.report({.file = file_.path, .text = more});
        }
    }

    std::vector<ZoneDefinition>& zones() { return zones_; }

  private:
    void tell(std::string text, std::string_view field = {}) {
        if (++told_ > limits::problems) return;
        diagnostics_.report({.file = file_.path,
                             .line = line_ > 0 ? std::optional(line_) : std::nullopt,
                             .field = shortened(field, 200),
                             .text = std::move(text)});
    }

    bool inside(Component component) const {
        return std::find(open_.begin(), open_.end(), component) != open_.end();
    }

    void read(std::string_view raw) {
        std::string converted;
        if (!isWellFormedUtf8(raw)) {
            converted = lineAsUtf8(raw);
            raw = converted;
        }
        if (raw.find('\0') != std::string_view::npos) {
            // The item's text would end there for the parser.
            converted = std::string(raw);
            std::erase(converted, '\0');
            raw = converted;
        }
        const auto line = ContentLine::parse(raw);
        if (!line) {
            if (!open_.empty() && !trimmedAscii(raw).empty()) tell("line without a property left out");
            return;
        }
        if (line->is("BEGIN")) return begin(trimmedAscii(line->value));
        if (line->is("END")) return endNamed(trimmedAscii(line->value));
        if (skippedDepth_ > 0 || open_.empty()) return;
        if (inside(Component::zone) && !zones_.empty()) zones_.back().text.append(raw).append("\n");
        switch (open_.back()) {
            case Component::calendar:
                return readCalendarLine(*line);
            case Component::zone:
                return readZoneLine(*line);
            case Component::observance:
                return readObservanceLine(*line);
            case Component::event:
            case Component::task:
                return readItemLine(*line, raw);
            case Component::alarm:
                if (item_ && isKept(asciiUpper(line->name), true)) keep(*line, raw);
                return;
            case Component::other:
                return;
        }
    }

    void begin(std::string_view name) {
        if (skippedDepth_ > 0 || open_.size() >= maximumDepth) {
            if (skippedDepth_ == 0) tell("components nested too deep left out");
            ++skippedDepth_;
            return;
        }
        const auto component = componentNamed(name);
        if (component == Component::calendar) {
            sawCalendar_ = true;
            if (open_.empty()) calendarCancelled_ = false;
            firstItemOfCalendar_ = file_.items.size();
        }
        const bool startsItem = component == Component::event || component == Component::task;
        if (startsItem && item_) {
            tell("event or task inside another one left out");
            ++skippedDepth_;
            return;
        }
        open_.push_back(component);
        if (inside(Component::zone) && component != Component::zone && !zones_.empty())
            zones_.back().text.append("BEGIN:").append(asciiUpper(name)).append("\n");
        if (startsItem) {
            item_.emplace();
            bad_.clear();
            keptLines_ = 0;
            hasTooMuchText_ = hasTooManyRules_ = hasTooManyDates_ = false;
            item_->kind = component == Component::event ? ScannedItem::Kind::event : ScannedItem::Kind::task;
            item_->line = line_;
            item_->text = component == Component::event ? "BEGIN:VEVENT\r\n" : "BEGIN:VTODO\r\n";
        } else if (component == Component::alarm && item_) {
            item_->text += "BEGIN:VALARM\r\n";
        } else if (component == Component::zone) {
            zones_.emplace_back();
        } else if (component == Component::observance && inside(Component::zone)) {
            zones_.back().observances.emplace_back();
        }
    }

    void endNamed(std::string_view name) {
        if (skippedDepth_ > 0) {
            --skippedDepth_;
            return;
        }
        const auto component = componentNamed(name);
        if (!inside(component)) return tell("END without BEGIN left out");
        // Components that were not closed end with the one around them.
        while (open_.back() != component) {
            tell("component is not closed");
            end(open_.back());
        }
        end(component);
    }

    void end(Component component) {
        open_.pop_back();
        if (inside(Component::zone) && !zones_.empty()) zones_.back().text.append("END\n");
        if (component == Component::alarm && item_) item_->text += "END:VALARM\r\n";
        if (component == Component::calendar && calendarCancelled_) {
            for (auto i = firstItemOfCalendar_; i < file_.items.size(); ++i)
                file_.items[i].cancelled = true;
        }
        if ((component == Component::event || component == Component::task) && item_) finishItem();
    }

    void finishItem() {
        const bool isEvent = item_->kind == ScannedItem::Kind::event;
        item_->text += isEvent ? "END:VEVENT\r\n" : "END:VTODO\r\n";
        if (isEvent && !item_->start && bad_.empty()) bad_ = "event without DTSTART";
        if (bad_.empty()) {
            if (item_->modified.empty()) item_->modified = stamp_;
            item_->wholeDays = markedAllDay_ && spansMidnights(*item_);
            hasTooManyItems_ = file_.items.size() == limits::items;
            if (!hasTooManyItems_) file_.items.push_back(std::move(*item_));
        } else {
            line_ = item_->line;
            tell(bad_ + "; left out", item_->uid);
        }
        stamp_.clear();
        markedAllDay_ = false;
        item_.reset();
    }

    void readCalendarLine(const ContentLine& line) {
        if (line.is("METHOD")) {
            calendarCancelled_ = equalIgnoringCase(trimmedAscii(line.value), "CANCEL");
        } else if (line.is("X-WR-CALNAME") || (line.is("NAME") && !file_.calendarName)) {
            if (const auto name = trimmedAscii(line.value); !name.empty())
                file_.calendarName = unescaped(name);
        } else if (line.is("X-APPLE-CALENDAR-COLOR") || (line.is("COLOR") && !file_.color)) {
            file_.color = std::string(trimmedAscii(line.value));
        }
    }

    void readZoneLine(const ContentLine& line) {
        auto& zone = zones_.back();
        if (line.is("TZID")) zone.tzid = unescaped(trimmedAscii(line.value));
        if (line.is("X-LIC-LOCATION")) zone.location = trimmedAscii(line.value);
    }

    void readObservanceLine(const ContentLine& line) {
        if (zones_.empty() || zones_.back().observances.empty()) return;
        auto& observance = zones_.back().observances.back();
        if (line.is("RRULE") && ++zoneRules_ > limits::zoneRules) {
            if (zoneRules_ == limits::zoneRules + 1)
                tell("more than " + counted(limits::zoneRules, "rules of time zones; the rest is left out"));
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

    void readItemLine(const ContentLine& written, std::string_view raw) {
        const auto name = asciiUpper(written.name);
        const auto line = written.value.find(':') != std::string_view::npos && isTimeName(name)
                              ? withUnquotedColon(written)
                              : written;
        auto& item = *item_;
        const bool isEvent = item.kind == ScannedItem::Kind::event;
        if (name == "UID") {
            item.uid = trimmedAscii(line.value);
        } else if (name == "SEQUENCE") {
            item.sequence = integerOr(line.value, 0);
        } else if (name == "LAST-MODIFIED") {
            item.modified = asciiUpper(trimmedAscii(line.value));
        } else if (name == "DTSTAMP") {
            stamp_ = asciiUpper(trimmedAscii(line.value));
        } else if (name == "DTSTART") {
            item.start = time(line, name, isEvent);
        } else if (name == (isEvent ? "DTEND" : "DUE")) {
            item.end = time(line, name, false);
        } else if (name == "DURATION") {
            item.duration = parseDuration(line.value);
            if (!item.duration)
                tell("wrong duration \"" + shortened(line.value, shownBytes) + "\" left out", name);
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
            const auto parameters = timeParameters(line);
            for (const auto piece : commaSeparated(line.value)) {
                if (trimmedAscii(piece).empty()) continue;
                if (!hasRoomForDate(name)) break;
                if (auto excluded = time(piece, parameters, name, false)) {
                    recurrence().exclusions.push_back(std::move(*excluded));
                }
            }
        } else if (name == "X-MICROSOFT-CDO-ALLDAYEVENT") {
            markedAllDay_ = equalIgnoringCase(trimmedAscii(line.value), "TRUE");
        } else if (isKept(name, false)) {
            keep(written, raw);
            if (isEvent) return;
            item.completed = item.completed || name == "COMPLETED" ||
                             (name == "STATUS" && equalIgnoringCase(trimmedAscii(line.value), "COMPLETED")) ||
                             (name == "PERCENT-COMPLETE" && integerOr(line.value, 0) >= 100);
        }
    }

    /// Appends the line to the item's text.
    void keep(const ContentLine& line, std::string_view raw) {
        const bool isLong = line.parameters.size() > limits::parameterBytes;
        const auto text = isLong ? withoutOtherParameters(line) : std::string();
        if (isLong) raw = text;
        auto& kept = item_->text;
        if (++keptLines_ > limits::lines || kept.size() + raw.size() > limits::textBytes) {
            if (std::exchange(hasTooMuchText_, true)) return;
            return tell("more text than an item may have (" + std::to_string(limits::textBytes >> 20U) +
                            " MB, " + counted(limits::lines, "lines); the rest is left out"),
                        item_->uid);
        }
        kept.append(raw).append("\r\n");
    }

    /// Long lists of parameters cost the parser the square of their length. What a record is made of stays.
    std::string withoutOtherParameters(const ContentLine& line) {
        std::string text(line.name);
        for (const auto* name : {"CN", "EMAIL", "PARTSTAT", "ROLE", "RELATED", "VALUE"}) {
            const auto value = line.parameter(name);
            if (!value) continue;
            if (value->size() > limits::parameterBytes) {
                tell(std::string(name) + " longer than " + counted(limits::parameterBytes, "bytes left out"),
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

    void addRule(std::vector<std::string>& rules, const ContentLine& line, const std::string& name) {
        const auto& all = recurrence();
        if (line.value.size() > limits::ruleBytes)
            return tell("rule longer than " + counted(limits::ruleBytes, "bytes left out"), name);
        if (all.rules.size() + all.exclusionRules.size() >= limits::rules) {
            if (std::exchange(hasTooManyRules_, true)) return;
            return tell("more than " + counted(limits::rules, "rules; the rest is left out"), item_->uid);
        }
        rules.emplace_back(line.value);
    }

    bool hasRoomForDate(const std::string& name) {
        const auto& all = recurrence();
        if (all.dates.size() + all.exclusions.size() < limits::dates) return true;
        if (!std::exchange(hasTooManyDates_, true))
            tell("more than " + counted(limits::dates, "dates in RDATE and EXDATE; the rest of ") + name +
                     " is left out",
                 item_->uid);
        return false;
    }

    TimeParameters timeParameters(const ContentLine& line) {
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

    std::optional<WrittenTime> time(const ContentLine& line, const std::string& name, bool needed) {
        return time(line.value, timeParameters(line), name, needed);
    }

    /// `needed`: an item without this time cannot stand.
    std::optional<WrittenTime> time(std::string_view value, const TimeParameters& parameters,
                                    const std::string& name, bool needed) {
        auto result = parseWrittenTime(value, parameters);
        if (result) return result;
        const auto reason = "wrong time \"" + shortened(value, shownBytes) + "\" in " + name;
        if (needed) {
            bad_ = (item_->kind == ScannedItem::Kind::event ? "event with a " : "task with a ") + reason;
        } else {
            tell(reason + " left out", item_->uid);
        }
        return std::nullopt;
    }

    void readDates(const ContentLine& line) {
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

    WrittenRecurrence& recurrence() {
        if (!item_->recurrence) item_->recurrence = std::make_unique<WrittenRecurrence>();
        return *item_->recurrence;
    }

    ScannedFile& file_;
    DiagnosticsSink& diagnostics_;
    std::vector<ZoneDefinition> zones_;
    int line_ = 0;
    int told_ = 0;
    std::vector<Component> open_;
    std::size_t skippedDepth_ = 0;
    bool sawCalendar_ = false;
    bool calendarCancelled_ = false;
    std::size_t firstItemOfCalendar_ = 0;
    std::size_t zoneRules_ = 0;
    /// Many lines name the same zone.
    std::shared_ptr<const std::string> lastTzid_;
    bool hasTooManyItems_ = false;
    // Of the item under way.
    std::optional<ScannedItem> item_;
    std::size_t keptLines_ = 0;
    bool hasTooMuchText_ = false;
    bool hasTooManyRules_ = false;
    bool hasTooManyDates_ = false;
    std::string stamp_;
    bool markedAllDay_ = false;
    /// Why the item under way cannot be used; empty when it can.
    std::string bad_;
};

}  // namespace

ScannedFile scanItems(std::filesystem::path path, std::string bytes, DiagnosticsSink& diagnostics,
                      ZonePool& zones) {
    ScannedFile file;
    file.path = std::move(path);
    const auto text = withoutUtf16(std::move(bytes));
    Scanner scanner(file, diagnostics);
    scanner.scan(text);
    for (auto& zone : scanner.zones())
        file.zones.push_back(zones.shared(std::move(zone)));
    return file;
}

}  // namespace platform
