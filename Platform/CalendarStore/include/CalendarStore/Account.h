#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace platform {

/// A source that the user added: a file, a folder of files or a tree of such folders.
struct Account {
    /// What its collections are beside ordinary calendars.
    enum class Kind { ordinary, birthdays, holidays };
    enum class Contents { calendars, contacts };

    std::string name = {};
    std::filesystem::path location = {};
    /// The user's own addresses there, without "mailto:".
    std::vector<std::string> addresses = {};
    bool isDelegate = false;
    Contents contents = Contents::calendars;
    Kind kind = Kind::ordinary;

    friend bool operator==(const Account&, const Account&) = default;
};

}  // namespace platform
