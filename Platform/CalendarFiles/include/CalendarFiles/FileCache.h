#pragma once

#include <System/Diagnostics.h>
#include <System/FileStamp.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace platform {

/// A file's bytes for a FileCache; a file that cannot be read, or is larger than any collection of the
/// user's, is reported and gives nothing.
std::optional<std::string> readForCache(const std::filesystem::path& file, DiagnosticsSink& diagnostics);

/// Texts by name, most often files by path. Each is parsed once, and again only when its content changed.
/// Not for several threads.
template <class Parsed>
class FileCache {
  public:
    using Parse = std::function<Parsed(const std::filesystem::path& file, std::string bytes)>;

    FileCache(std::shared_ptr<DiagnosticsSink> diagnostics, Parse parse)
        : diagnostics_(std::move(diagnostics)), parse_(std::move(parse)) {}

    /// nullptr for a file that cannot be read. The same object as long as the content stays the same.
    std::shared_ptr<const Parsed> read(const std::filesystem::path& file) {
        // Stamped before reading: a change meanwhile shows in the next comparison.
        return read(file, FileStamp::of(file).number(), [&] { return readForCache(file, *diagnostics_); });
    }

    /// The same for a text that `readBytes` gives, an optional string. It is not called when the text was
    /// read with an equal version before; a text without a version is read every time.
    template <class ReadBytes>
    std::shared_ptr<const Parsed> read(const std::filesystem::path& name,
                                       std::optional<std::uint64_t> version, const ReadBytes& readBytes) {
        Entry& entry = entries_[name.native()];
        entry.used = true;
        if (entry.parsed && version && entry.version == version) return entry.parsed;
        auto bytes = readBytes();
        if (!bytes) {
            entry = {.used = true};
            return nullptr;
        }
        const auto hash = std::hash<std::string_view>{}(*bytes);
        entry.version = version;
        if (entry.parsed && entry.contentHash == hash) return entry.parsed;
        entry.contentHash = hash;
        entry.parsed = std::make_shared<const Parsed>(parse_(name, *std::move(bytes)));
        return entry.parsed;
    }

    /// Forgets the files that were not asked for since the last call.
    void forgetUnused() {
        std::erase_if(entries_, [](const auto& entry) { return !entry.second.used; });
        for (auto& [file, entry] : entries_)
            entry.used = false;
    }

  private:
    struct Entry {
        std::optional<std::uint64_t> version = {};
        bool used = false;
        std::size_t contentHash = 0;
        std::shared_ptr<const Parsed> parsed = nullptr;
    };

    std::shared_ptr<DiagnosticsSink> diagnostics_;
    Parse parse_;
    std::unordered_map<std::string, Entry> entries_;
};

}  // namespace platform
