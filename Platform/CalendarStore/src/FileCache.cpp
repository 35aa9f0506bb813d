#include "FileCache.h"

#include "Identifiers.h"

#include <Foundation/Files.h>

namespace platform {
namespace {

/// More than any calendar; keeps a wrong file from filling the memory.
constexpr std::uintmax_t largestFile = std::uintmax_t{256} << 20;

}  // namespace

std::shared_ptr<const ScannedFile> FileCache::read(const std::filesystem::path& path) {
    auto& entry = entries_[path];
    entry.used = true;
    const auto stamp = FileStamp::of(path);
    if (entry.file && entry.stamp == stamp && !entry.tooFresh) return entry.file;

    // Stamped before reading: a change meanwhile shows in the next comparison.
    const bool isFresh = stamp.isFresh();
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
    entry.tooFresh = isFresh;
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
