#pragma once

#include <System/Diagnostics.h>
#include <System/FileStamp.h>
#include <System/InParallel.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace platform {

/// A file's bytes for a FileCache; a file that cannot be read, or is larger than any collection of the
/// user's, is reported and gives nothing.
std::optional<std::string> readForCache(const std::filesystem::path& file, DiagnosticsSink& diagnostics);

/// Texts by name, most often files by path. Each is parsed once, and again only when its content changed.
/// Not for several threads.
template <class Parsed>
class FileCache {
  public:
    /// Called by several threads at once.
    using Parse = std::function<Parsed(const std::filesystem::path& file, std::string bytes,
                                       DiagnosticsSink& diagnostics)>;

    FileCache(std::shared_ptr<DiagnosticsSink> diagnostics, Parse parse)
        : diagnostics_(std::move(diagnostics)), parse_(std::move(parse)) {}

    /// nullptr for a file that cannot be read. The same object as long as the content stays the same.
    std::shared_ptr<const Parsed> read(const std::filesystem::path& file) {
        // Stamped before reading: a change meanwhile shows in the next comparison.
        const auto version = FileStamp::of(file).number();
        Entry& entry = entries_[file.native()];
        entry.used = true;
        if (!entry.parsed || !version || entry.version != version)
            update(entry, file, version, readForCache(file, *diagnostics_), *diagnostics_);
        return entry.parsed;
    }

    /// The same for several texts with a `name` and a `version`, in their order, on all processors.
    /// `readBytes`, called with a text and a sink, gives an optional string. It is not called for a text that
    /// was read with an equal version before; a text without a version is read every time. What is reported
    /// while a text is read and parsed comes in the order of the texts.
    template <class Text, class ReadBytes>
    std::vector<std::shared_ptr<const Parsed>> readAll(const std::vector<Text>& texts,
                                                       const ReadBytes& readBytes) {
        std::vector<Entry*> entries;
        entries.reserve(texts.size());
        std::vector<std::size_t> unknown;
        for (const auto& text : texts) {
            Entry& entry = entries_[text.name];
            entry.used = true;
            const bool isKnown = entry.parsed && text.version && entry.version == text.version;
            // A name that comes twice is one text.
            if (!isKnown && !std::exchange(entry.isQueued, true)) unknown.push_back(entries.size());
            entries.push_back(&entry);
        }
        std::vector<CollectedDiagnostics> reports(unknown.size());
        inParallel(unknown.size(), [&](std::size_t i) {
            const auto& text = texts[unknown[i]];
            update(*entries[unknown[i]], text.name, text.version, readBytes(text, reports[i]), reports[i]);
        });
        for (const auto& report : reports) {
            for (auto& diagnostic : report.all())
                diagnostics_->report(std::move(diagnostic));
        }
        std::vector<std::shared_ptr<const Parsed>> parsed;
        parsed.reserve(entries.size());
        for (Entry* entry : entries) {
            entry->isQueued = false;
            parsed.push_back(entry->parsed);
        }
        return parsed;
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
        /// While several are read.
        bool isQueued = false;
        std::size_t contentHash = 0;
        std::shared_ptr<const Parsed> parsed = nullptr;
    };

    void update(Entry& entry, const std::filesystem::path& name, std::optional<std::uint64_t> version,
                std::optional<std::string> bytes, DiagnosticsSink& diagnostics) const {
        if (!bytes) {
            entry = {.used = true};
            return;
        }
        const auto hash = std::hash<std::string_view>{}(*bytes);
        entry.version = version;
        if (entry.parsed && entry.contentHash == hash) return;
        entry.contentHash = hash;
        entry.parsed = std::make_shared<const Parsed>(parse_(name, *std::move(bytes), diagnostics));
    }

    std::shared_ptr<DiagnosticsSink> diagnostics_;
    Parse parse_;
    std::unordered_map<std::string, Entry> entries_;
};

}  // namespace platform
