#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace platform {

/// Distinguishes one state of a file from another.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = -1;
    std::int64_t modifiedNanoseconds = 0;
    std::int64_t changedNanoseconds = 0;

    /// Of the file behind symbolic links; size -1 when there is none. `folder`: an open folder that a
    /// relative `file` lies in.
    static FileStamp of(const char* file, int folder);
    static FileStamp of(const std::filesystem::path& file);

    /// Changed so shortly ago that a further change could carry the same stamp. By the system's clock.
    bool isFresh() const;
    /// Made of all fields: states with equal numbers are the same. Nothing for a fresh stamp.
    std::optional<std::uint64_t> number() const;

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

}  // namespace platform
