#pragma once

#include "FileProblems.h"
#include "ZoneDefinition.h"

#include <CalendarFiles/ContentLine.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace platform {

/// Collects the VTIMEZONEs of one file line by line. Everything but `begin` is for lines inside of one.
class ZoneReader {
  public:
    explicit ZoneReader(FileProblems& problems) : problems_(problems) {}

    void begin() { zones_.emplace_back(); }
    /// A STANDARD, a DAYLIGHT, or a component that means nothing here.
    void beginPart(std::string_view name, bool isObservance);
    void endPart() { zones_.back().text.append("END\n"); }
    /// Any line, as written: the zone's text.
    void keep(std::string_view raw) { zones_.back().text.append(raw).append("\n"); }
    void readLine(const ContentLine& line);
    void readObservanceLine(const ContentLine& line);

    /// In the order of the file.
    std::vector<ZoneDefinition>& zones() { return zones_; }

  private:
    FileProblems& problems_;
    std::vector<ZoneDefinition> zones_;
    std::size_t rules_ = 0;
};

}  // namespace platform
