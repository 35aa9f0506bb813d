#include <System/ZoneChange.h>

#include <System/FileWatcher.h>
#include <System/Files.h>
#include <System/MainQueue.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace platform {

namespace {

namespace fs = std::filesystem;

/// The file that decides about the zone; nothing when no file does.
std::optional<fs::path> zoneFile() {
    const char* variable = std::getenv("TZ");
    if (!variable) return "/etc/localtime";
    std::string name = variable;
    if (name.starts_with(':')) name.erase(0, 1);
    if (name.starts_with('/')) return name;
    return std::nullopt;
}

/// Where a link leads and the rules found there.
std::pair<fs::path, std::string> zoneIn(const fs::path& file) {
    std::error_code error;
    const fs::path target = fs::canonical(file, error);
    auto rules = readRegularFile(target, error, 1 << 20);
    return {target, std::move(rules).value_or("")};
}

}  // namespace

struct ZoneChange::State {
    fs::path file;
    std::pair<fs::path, std::string> zone;
    std::function<void()> changed;
    /// Last member: its thread ends before the rest goes.
    std::unique_ptr<FileWatcher> watcher;

    void compare() {
        auto now = zoneIn(file);
        // Gone for an instant while it is replaced.
        if (now.second.empty() || now == zone) return;
        zone = std::move(now);
        changed();
    }
};

ZoneChange::ZoneChange(const Environment& environment, std::function<void()> changed)
    : state_(std::make_shared<State>()) {
    const auto file = zoneFile();
    if (!file) return;
    state_->file = *file;
    state_->changed = std::move(changed);
    state_->watcher = std::make_unique<FileWatcher>(
        std::vector{*file},
        [weak = std::weak_ptr(state_)](const auto&) {
            MainQueue::shared().async([weak] {
                if (const auto state = weak.lock()) state->compare();
            });
        },
        0.2, environment.diagnostics);
    // Read after watching began: no change falls between.
    state_->zone = zoneIn(*file);
}

ZoneChange::~ZoneChange() = default;

}  // namespace platform
