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
    /// The user's own addresses from that configuration.
    std::vector<std::string> addresses = {};
    /// Added only when the user confirms it.
    bool needsConsent = false;
};

/// The result of a search.
struct FoundCandidates {
    std::vector<LocationCandidate> candidates = {};
    /// What could not be used and why, one line each, for the user.
    std::vector<std::string> notes = {};
};

}  // namespace hbr
