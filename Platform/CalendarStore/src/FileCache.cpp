#include "FileCache.h"

#include "Identifiers.h"

#include <Foundation/Files.h>

#include <chrono>

#include <sys/stat.h>

namespace platform {
namespace {

/// File systems stamp changes by a clock that ticks every few milliseconds, some in whole seconds.
constexpr std::int64_t clockTick = 2'000'000'000;
/// More than any calendar; keeps a wrong file from filling the memory.
constexpr std::uintmax_t largestFile = std::uintmax_t{256} << 20;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

std::int64_t systemNanoseconds() {
    using namespace std::chrono;
    return duration_cast<std::chrono::nanoseconds>(system_clock::now().time_since_epoch()).count();
}

}  // namespace

FileStamp FileStamp::of(const std::filesystem::path& file) {
    struct stat status{};
    if (stat(file.c_str(), &status) != 0) return {};
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim),
            nanoseconds(status.st_ctim)};
}

std::shared_ptr<const ScannedFile> FileCache::read(const std::filesystem::path& path) {
    auto& entry = entries_[path];
    entry.used = true;
    const auto stamp = FileStamp::of(path);
    if (entry.file && entry.stamp == stamp && !entry.tooFresh) return entry.file;

    // Stamped before reading: a change meanwhile shows in the next comparison.
    const auto now = systemNanoseconds();
    std::error_code error;
    auto bytes = readRegularFile(path, error, largestFile);
    if (!bytes) {
        diagnostics_->report({.severity = Diagnostic::Severity::error,
                              .file = path,
                              .text = "cannot be read: " + error.message()});
        entry = {.stamp = stamp, .used = true};
        return nullptr;
    }
    const auto hash = fnv1a(*bytes);
    entry.stamp = stamp;
    entry.tooFresh = now - std::max(stamp.modifiedNanoseconds, stamp.changedNanoseconds) < clockTick;
    if (entry.file && entry.contentHash == hash) return entry.file;
    entry.contentHash = hash;
    entry.file = std::make_shared<const ScannedFile>(scanItems(path, std::move(*bytes), *diagnostics_));
    return entry.file;
}

void FileCache::forgetUnused() {
    for (auto at = entries_.begin(); at != entries_.end();) {
        at = at->second.used ? std::next(at) : entries_.erase(at);
    }
    for (auto& [path, entry] : entries_)
        entry.used = false;
}

}  // namespace platform
