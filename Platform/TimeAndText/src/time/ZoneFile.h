#pragma once

#include <TimeAndText/TimeZone.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// What a compiled zone file (RFC 8536, versions 1 to 3) says about offsets.
struct ZoneFile {
    int before = 0;
    std::vector<TimeZone::Transition> transitions;
    std::string footer;

    /// Nothing when the bytes are not a zone file, are cut short, contradict themselves or count leap
    /// seconds.
    static std::optional<ZoneFile> parse(std::string_view bytes);
    /// Regular files only.
    static std::optional<ZoneFile> read(const std::filesystem::path& path);
};

}  // namespace platform
