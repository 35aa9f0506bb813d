#include <Setup/UsualPlaces.h>

#include "CalendarPrograms.h"

#include <CalendarFiles/ContentLine.h>
#include <CalendarFiles/LogicalLines.h>
#include <CalendarFiles/TextDecoding.h>
#include <Setup/PathExpansion.h>
#include <System/Files.h>

#include <algorithm>

namespace hbr {

namespace {

namespace fs = std::filesystem;

/// A saved invitation or answer is a message and not a calendar to keep. Its METHOD comes before its items
/// (RFC 5546, 3.2).
bool isLetter(const fs::path& file) {
    std::error_code error;
    const auto content = platform::readRegularFile(file, error);
    if (!content) return false;
    const std::string text = platform::withoutUtf16(*content);
    platform::LogicalLines lines(text);
    while (lines.next()) {
        const auto line = platform::ContentLine::parse(lines.line());
        if (!line) continue;
        if (line->is("METHOD")) return !platform::equalIgnoringCase(line->value, "PUBLISH");
        if (line->is("BEGIN") && platform::equalIgnoringCase(line->value, "VEVENT")) return false;
    }
    return false;
}

std::vector<fs::path> calendarFilesIn(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const auto& file = entry->path();
        const bool isHidden = file.filename().native().starts_with('.');
        std::error_code ignored;
        if (isHidden || !platform::equalIgnoringCase(file.extension().native(), ".ics")) continue;
        if (entry->is_regular_file(ignored) && !isLetter(file)) files.push_back(file);
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

std::vector<fs::path> usualFolders(const platform::Environment& environment) {
    const fs::path data = environment.dataDirectory.parent_path();
    return {environment.homeDirectory / ".calendars", data / "calendars",
            environment.homeDirectory / ".contacts", data / "contacts"};
}

FoundCandidates usualPlaces(const platform::Environment& environment) {
    FoundCandidates found = placesOfCalendarPrograms(environment);
    std::error_code ignored;
    for (const auto& folder : usualFolders(environment)) {
        if (fs::exists(fs::status(folder, ignored))) found.candidates.push_back({.location = folder});
    }
    const fs::path& home = environment.homeDirectory;
    for (const auto& file : calendarFilesIn(home))
        found.candidates.push_back({.location = file});
    for (const char* folder : {"Documents", "Downloads"}) {
        for (const auto& file : calendarFilesIn(home / folder))
            found.candidates.push_back({.location = file, .needsConsent = true});
    }
    return found;
}

}  // namespace hbr
