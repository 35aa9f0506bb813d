#include "ItemScanner.h"

#include "FileProblems.h"
#include "ItemLimits.h"
#include "ItemReader.h"
#include "ZoneReader.h"

#include <CalendarFiles/LogicalLines.h>
#include <CalendarFiles/TextDecoding.h>
#include <TimeAndText/Text.h>

#include <algorithm>
#include <utility>

namespace platform {
namespace {

/// Deeper components are skipped; calendars nest three levels.
constexpr std::size_t maximumDepth = 16;

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

/// Follows the components of a file and gives each line to the reader of its component.
class Scanner {
  public:
    Scanner(ScannedFile& file, DiagnosticsSink& diagnostics)
        : file_(file), problems_(file.path, diagnostics), item_(problems_), zones_(problems_) {}

    void scan(std::string_view text) {
        LogicalLines lines(text);
        while (!hasTooManyItems_ && lines.next()) {
            problems_.setLine(lines.number());
            if (lines.line().empty()) continue;
            if (lines.tooLong()) {
                problems_.report("line longer than " + std::to_string(LogicalLines::maximumLength / 1024) +
                                 " KB left out");
                continue;
            }
            read(lines.line());
        }
        if (hasTooManyItems_) {
            problems_.setLine(0);
            file_.items.clear();
            problems_.report("more than " + counted(limits::items, "events and tasks; the file is not used"));
            return;
        }
        if (!open_.empty() || skippedDepth_ > 0) {
            problems_.report("the file ends inside a component");
            // A file that was cut off still shows what it has.
            while (!open_.empty())
                end(open_.back());
        }
        if (!sawCalendar_) {
            problems_.setLine(0);
            problems_.report("no calendar in this file");
        }
        problems_.reportRest();
    }

    std::vector<ZoneDefinition>& zones() { return zones_.zones(); }

  private:
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
            // Texts go to libraries for which they would end there.
            converted = std::string(raw);
            std::erase(converted, '\0');
            raw = converted;
        }
        const auto line = ContentLine::parse(raw);
        if (!line) {
            if (!open_.empty() && !trimmedAscii(raw).empty())
                problems_.report("line without a property left out");
            return;
        }
        if (line->is("BEGIN")) return begin(trimmedAscii(line->value));
        if (line->is("END")) return endNamed(trimmedAscii(line->value));
        if (skippedDepth_ > 0 || open_.empty()) return;
        const bool isInZone = inside(Component::zone);
        if (isInZone) zones_.keep(raw);
        switch (open_.back()) {
            case Component::calendar:
                return readCalendarLine(*line);
            case Component::zone:
                return zones_.readLine(*line);
            case Component::observance:
                if (isInZone) zones_.readObservanceLine(*line);
                return;
            case Component::event:
            case Component::task:
                return item_.readLine(*line, raw);
            case Component::alarm:
                if (item_.isOpen()) item_.readAlarmLine(*line, raw);
                return;
            case Component::other:
                return;
        }
    }

    void begin(std::string_view name) {
        if (skippedDepth_ > 0 || open_.size() >= maximumDepth) {
            if (skippedDepth_ == 0) problems_.report("components nested too deep left out");
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
        if (startsItem && item_.isOpen()) {
            problems_.report("event or task inside another one left out");
            ++skippedDepth_;
            return;
        }
        open_.push_back(component);
        if (component == Component::zone) {
            zones_.begin();
        } else if (inside(Component::zone)) {
            zones_.beginPart(name, component == Component::observance);
        }
        if (startsItem) {
            item_.begin(component == Component::event ? ScannedItem::Kind::event : ScannedItem::Kind::task);
        } else if (component == Component::alarm && item_.isOpen()) {
            item_.beginAlarm();
        }
    }

    void endNamed(std::string_view name) {
        if (skippedDepth_ > 0) {
            --skippedDepth_;
            return;
        }
        const auto component = componentNamed(name);
        if (!inside(component)) return problems_.report("END without BEGIN left out");
        // Components that were not closed end with the one around them.
        while (open_.back() != component) {
            problems_.report("component is not closed");
            end(open_.back());
        }
        end(component);
    }

    void end(Component component) {
        open_.pop_back();
        if (inside(Component::zone)) zones_.endPart();
        if (component == Component::alarm && item_.isOpen()) item_.endAlarm();
        if ((component == Component::event || component == Component::task) && item_.isOpen())
            add(item_.end());
        if (component == Component::calendar && calendarCancelled_) {
            for (auto i = firstItemOfCalendar_; i < file_.items.size(); ++i)
                file_.items[i].cancelled = true;
        }
    }

    void add(std::optional<ScannedItem> item) {
        if (!item) return;
        hasTooManyItems_ = file_.items.size() == limits::items;
        if (!hasTooManyItems_) file_.items.push_back(*std::move(item));
    }

    void readCalendarLine(const ContentLine& line) {
        if (line.is("METHOD")) {
            calendarCancelled_ = equalIgnoringCase(trimmedAscii(line.value), "CANCEL");
        } else if (line.is("X-WR-CALNAME") || (line.is("NAME") && !file_.calendarName)) {
            if (const auto name = trimmedAscii(line.value); !name.empty())
                file_.calendarName = unescapedText(name);
        } else if (line.is("X-APPLE-CALENDAR-COLOR") || (line.is("COLOR") && !file_.color)) {
            file_.color = std::string(trimmedAscii(line.value));
        }
    }

    ScannedFile& file_;
    FileProblems problems_;
    ItemReader item_;
    ZoneReader zones_;
    std::vector<Component> open_;
    std::size_t skippedDepth_ = 0;
    bool sawCalendar_ = false;
    bool calendarCancelled_ = false;
    std::size_t firstItemOfCalendar_ = 0;
    bool hasTooManyItems_ = false;
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
