#pragma once

#include <System/Diagnostics.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace platform {

/// Reports, on a worker thread of its own, that something in the watched files or folders changed (written in
/// place, renamed over, added, removed, vanished and come back; of a folder its own entries, not those of
/// the folders in it). `changed` holds the watched paths as absolute paths, not the entries. A burst is
/// reported once, after it went quiet for `quietSeconds`, at the latest after ten times that. Never polls.
/// Watching begins before the constructor returns; destruction waits for a call under way, unless the call
/// itself destroys the watcher.
class FileWatcher {
  public:
    using Callback = std::function<void(const std::vector<std::filesystem::path>& changed)>;
    static constexpr double defaultQuietSeconds = 0.2;

    /// What the system refuses to watch (its limits are reached) is reported.
    FileWatcher(std::vector<std::filesystem::path> paths, Callback callback,
                double quietSeconds = defaultQuietSeconds,
                std::shared_ptr<DiagnosticsSink> diagnostics = nullptr);
    ~FileWatcher();
    FileWatcher(const FileWatcher&) = delete;
    FileWatcher& operator=(const FileWatcher&) = delete;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace platform
