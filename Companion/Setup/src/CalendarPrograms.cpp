#include "CalendarPrograms.h"

#include "SectionedConfiguration.h"

#include <Setup/PathExpansion.h>
#include <System/Files.h>
#include <TimeAndText/Text.h>
#include <Words/CompanionText.h>

#include <algorithm>
#include <cstdlib>

namespace hbr {

namespace {

namespace fs = std::filesystem;

class ProgramSearch {
  public:
    explicit ProgramSearch(const platform::Environment& environment)
        : environment_(environment),
          home_(environment.homeDirectory),
          config_(environment.configDirectory.parent_path()) {}

    FoundCandidates run() {
        // Where the variable is set, vdirsyncer reads no other file.
        const char* named = std::getenv("VDIRSYNCER_CONFIG");
        readVdirsyncer(named && *named
                           ? expandedPath(named, home_)
                           : firstOf({home_ / ".vdirsyncer/config", config_ / "vdirsyncer/config"}));
        readFolders("khal", "calendars", firstOf({config_ / "khal/config", home_ / ".khal/khal.conf"}));
        readFolders("khard", "addressbooks",
                    firstOf({config_ / "khard/khard.conf", home_ / ".config/khard/khard.conf"}));
        return std::move(found_);
    }

  private:
    /// The first one that exists, as in these programs.
    static fs::path firstOf(const std::vector<fs::path>& files) {
        std::error_code ignored;
        const auto there = std::find_if(files.begin(), files.end(),
                                        [&](const auto& file) { return fs::exists(file, ignored); });
        return there == files.end() ? fs::path() : *there;
    }

    std::vector<ConfigurationSection> sectionsOf(const fs::path& file, const std::string& program) {
        if (file.empty()) return {};
        std::error_code error;
        constexpr std::uintmax_t longest = 1 << 20;
        const auto text = platform::readRegularFile(file, error, longest);
        if (text) return readSections(*text);
        note("Setup.program.unreadable", {withTilde(file, home_), program, error.message()});
        return {};
    }

    void note(std::string_view key, const std::vector<std::string>& texts) {
        found_.notes.push_back(
            companionText(environment_, key, std::vector<L10n::FormatArgument>(texts.begin(), texts.end())));
    }

    void add(const std::string& program, const std::string& path, LocationCandidate candidate) {
        const fs::path pattern = home_ / expandedPath(path, home_);
        candidate.knownFrom = {program};
        // For all folders of one folder that folder itself, so that later ones are included.
        const auto last = pattern.has_filename() ? pattern.filename() : pattern.parent_path().filename();
        const auto parent =
            pattern.has_filename() ? pattern.parent_path() : pattern.parent_path().parent_path();
        const bool isWholeFolder = (last == "*" || last == "**") && !hasWildcard(parent);
        const auto matches = isWholeFolder ? std::vector{parent} : matchingPaths(pattern);
        for (const auto& match : matches) {
            candidate.location = match;
            std::error_code ignored;
            if (!fs::exists(fs::symlink_status(match, ignored))) {
                note("Setup.program.missing", {program, withTilde(match, home_)});
            } else {
                found_.candidates.push_back(candidate);
            }
        }
    }

    static bool hasWildcard(const fs::path& path) {
        return path.native().find_first_of("*?[") != std::string::npos;
    }

    void readVdirsyncer(const fs::path& file) {
        for (const auto& section : sectionsOf(file, "vdirsyncer")) {
            const auto type = section.value("type");
            const bool isOnDisk = type == "filesystem" || type == "singlefile";
            if (!section.name.starts_with("storage ") || !isOnDisk) continue;
            auto path = section.value("path");
            if (!path) {
                note("Setup.program.noPath", {section.name});
                continue;
            }
            // In the path of a single file, "%s" is replaced by the names of its collections.
            if (const auto names = path->find("%s"); type == "singlefile" && names != std::string::npos) {
                path->replace(names, 2, "*");
            }
            add("vdirsyncer", *path, {});
        }
    }

    /// "[GROUP]" with "[[NAME]]" sections below it, each with its path.
    void readFolders(const std::string& program, std::string_view group, const fs::path& file) {
        bool isWithin = false;
        for (const auto& section : sectionsOf(file, program)) {
            if (section.depth < 2) isWithin = section.name == group;
            const auto path = section.value("path");
            if (section.depth != 2 || !isWithin || !path) continue;
            LocationCandidate candidate;
            for (const auto& address : platform::split(section.value("addresses").value_or(""), ",", false)) {
                auto trimmed = platform::trimmed(address);
                if (!trimmed.empty()) candidate.addresses.push_back(std::move(trimmed));
            }
            add(program, *path, std::move(candidate));
        }
    }

    const platform::Environment& environment_;
    const fs::path home_;
    const fs::path config_;
    FoundCandidates found_;
};

}  // namespace

FoundCandidates placesOfCalendarPrograms(const platform::Environment& environment) {
    return ProgramSearch(environment).run();
}

}  // namespace hbr
