#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace hbr {

/// A file or folder that may hold calendars, contacts or both.
struct LocationCandidate {
    std::filesystem::path location = {};
    /// The programs whose configuration names it; none for a usual place or one that the user named.
    std::vector<std::string> knownFrom = {};
    /// The user's own addresses that stand beside it there.
    std::vector<std::string> addresses = {};
    /// Taken only when a person says so.
    bool needsConsent = false;
};

/// What a search brought.
struct FoundCandidates {
    std::vector<LocationCandidate> candidates = {};
    /// What could not be made use of, a line each, for the user to know.
    std::vector<std::string> notes = {};
};

}  // namespace hbr
