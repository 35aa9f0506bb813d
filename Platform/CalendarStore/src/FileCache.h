#pragma once

#include "ItemScanner.h"

#include <Foundation/Diagnostics.h>
#include <Foundation/FileStamp.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>

namespace platform {

/// Scanned files by path: each is read once, and again only when it changed. Not for several threads.
class FileCache {
  public:
    explicit FileCache(std::shared_ptr<DiagnosticsSink> diagnostics) : diagnostics_(std::move(diagnostics)) {}

    /// Nothing for a file that cannot be read, with a diagnostic.
    std::shared_ptr<const ScannedFile> read(const std::filesystem::path& path);
    /// Forgets the files that were not asked for since the last call.
    void forgetUnused();

  private:
    struct Entry {
        FileStamp stamp = {};
        /// The file changed so shortly before it was read that a further change could carry the same stamp.
        bool tooFresh = false;
        bool used = false;
        std::shared_ptr<const ScannedFile> file = nullptr;
        std::uint64_t contentHash = 0;
    };

    std::shared_ptr<DiagnosticsSink> diagnostics_;
    std::map<std::filesystem::path, Entry> entries_;
};

}  // namespace platform
