#pragma once

#include <CalendarStore/Account.h>
#include <Foundation/Diagnostics.h>

#include <filesystem>
#include <string>
#include <vector>

namespace platform {

/// A calendar on disk: one file, or a folder with its .ics files.
struct FoundCollection {
    /// Below the account's location, "/" between names; empty for the location itself.
    std::string path;
    std::filesystem::path location;
    bool isFolder = false;
    /// Sorted by name.
    std::vector<std::filesystem::path> files;
};

struct FoundAccount {
    Account account;
    bool readable = false;
    /// Why it cannot be read.
    std::string problem;
    /// Sorted by path.
    std::vector<FoundCollection> collections;
    /// What has to be watched to notice every change.
    std::vector<std::filesystem::path> watched;
};

/// Looks through an account's location: a file, a folder that holds .ics files, or a tree of such folders,
/// four levels deep. Hidden names are passed over; symbolic links are followed to regular files and folders,
/// no folder is read twice; nothing but regular files counts.
FoundAccount discover(const Account& account, DiagnosticsSink& diagnostics);

}  // namespace platform
