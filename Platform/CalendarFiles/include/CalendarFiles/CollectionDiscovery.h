#pragma once

#include <System/Diagnostics.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A calendar or an address book on disk: one file, or a folder with its files.
struct FoundCollection {
    /// Below the account's location, "/" between names; empty for the location itself.
    std::string path;
    std::filesystem::path location;
    bool isFolder = false;
    /// Their paths, sorted; as texts, because there are many of them.
    std::vector<std::string> files;
};

struct FoundLocation {
    bool readable = false;
    /// Why it cannot be read.
    std::string problem;
    /// Sorted by path.
    std::vector<FoundCollection> collections;
    /// What has to be watched to notice every change.
    std::vector<std::filesystem::path> watched;
};

/// Why a location cannot be read; empty when it can.
std::string locationProblem(const std::filesystem::path& location);

/// Looks through an account's location: a file, a folder that holds files with the ending (".ics"), or a
/// tree of such folders, four levels deep; a folder with `displayname` or `color` files is one without any,
/// unless it holds the other of calendars (.ics) and address books (.vcf).
/// Hidden names are skipped; symbolic links are followed to regular files and folders, no folder is read
/// twice; only regular files are read. A location that cannot be read is reported under the account.
FoundLocation discoverCollections(const std::filesystem::path& location, std::string_view ending,
                                  const std::string& account, DiagnosticsSink& diagnostics);

}  // namespace platform
