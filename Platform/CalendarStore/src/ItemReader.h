#pragma once

#include "FileProblems.h"
#include "ScannedItem.h"

#include <CalendarFiles/ContentLine.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Collects the VEVENTs and VTODOs of one file line by line, one after the other. What is wrong inside of an
/// item is reported and left out; without a valid start the item itself is.
class ItemReader {
  public:
    explicit ItemReader(FileProblems& problems) : problems_(problems) {}

    /// Between `begin` and `end`.
    bool isOpen() const { return current_.has_value(); }
    void begin(ScannedItem::Kind kind);
    /// Nothing for an item that cannot be used.
    std::optional<ScannedItem> end();

    // Only while an item is open. `raw` is the whole line, as UTF-8.
    void readLine(const ContentLine& line, std::string_view raw);
    void beginAlarm();
    void readAlarmLine(const ContentLine& line, std::string_view raw);
    void endAlarm();

  private:
    struct Current {
        Current(ScannedItem::Kind kind, int line);

        ScannedItem item;
        std::size_t keptLines = 0;
        bool hasTooMuchText = false;
        bool hasTooManyRules = false;
        bool hasTooManyDates = false;
        bool isMarkedAllDay = false;
        /// DTSTAMP.
        std::string stamp;
        /// Why the item cannot be used; empty when it can.
        std::string bad;
    };

    /// Appends the line to the item's text.
    void keep(const ContentLine& line, std::string_view raw);
    std::string withoutOtherParameters(const ContentLine& line);
    WrittenRecurrence& recurrence();
    void addRule(std::vector<std::string>& rules, const ContentLine& line, std::string_view name);
    bool hasRoomForDate(std::string_view name);
    void readDates(const ContentLine& line);
    void readExclusions(const ContentLine& line);
    TimeParameters timeParameters(const ContentLine& line);
    /// `needed`: the item cannot be used without it.
    std::optional<WrittenTime> time(const ContentLine& line, std::string_view name, bool needed);
    std::optional<WrittenTime> time(std::string_view value, const TimeParameters& parameters,
                                    std::string_view name, bool needed);

    FileProblems& problems_;
    std::optional<Current> current_;
    /// Many lines name the same zone.
    std::shared_ptr<const std::string> lastTzid_;
};

}  // namespace platform
