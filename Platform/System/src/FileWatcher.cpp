#include "FileDescriptor.h"
#include "FileWatchPlan.h"

#include <System/FileWatcher.h>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <set>
#include <thread>
#include <unordered_map>

namespace platform {
namespace fs = std::filesystem;
namespace {

using Clock = std::chrono::steady_clock;

bool liesBelow(const fs::path& path, const fs::path& folder) {
    auto [end, rest] = std::ranges::mismatch(folder, path);
    return end == folder.end();
}

/// One watched path: as asked for, and where its links lead at the moment.
struct Target {
    fs::path path;
    fs::path real;
    bool isThere = false;

    bool exists() const {
        std::error_code ignored;
        return fs::exists(path, ignored);
    }
    void resolve() {
        std::error_code error;
        real = fs::weakly_canonical(path, error);
        if (error) real = path;
    }
    /// `place`: an entry of a watched folder, or the folder itself.
    bool isTouchedBy(const fs::path& place) const {
        auto touches = [&place](const fs::path& own) {
            return place == own || place.parent_path() == own || liesBelow(own, place);
        };
        return touches(path) || touches(real);
    }
};

class Watch {
  public:
    Watch(std::vector<fs::path> paths, FileWatcher::Callback callback, double quietSeconds,
          std::shared_ptr<DiagnosticsSink> diagnostics)
        : callback_(std::move(callback)),
          diagnostics_(std::move(diagnostics)),
          quiet_(std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(quietSeconds))),
          wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
        for (fs::path& path : paths) {
            Target& target = targets_.emplace_back();
            target.path = fs::absolute(path).lexically_normal();
            if (!target.path.has_filename()) target.path = target.path.parent_path();
            target.isThere = target.exists();
            target.resolve();
        }
        install();
    }

    void stop() {
        isStopped_ = true;
        eventfd_write(wake_.number(), 1);
    }

    void run() {
        while (waitForEvents()) {
            if (isStopped_) return;
            readEvents();
            if (touched_.empty() || Clock::now() < dueAt()) continue;
            notify();
        }
    }

  private:
    using Folders = std::unordered_map<int, std::vector<fs::path>>;

    /// Unbroken change is reported every so many quiet periods.
    static constexpr int longestBurst = 10;

    std::vector<fs::path> targetPaths() const {
        std::vector<fs::path> paths;
        for (const Target& target : targets_)
            paths.push_back(target.path);
        return paths;
    }

    /// Replaces all watches by those of the plan, until the plan no longer changes meanwhile.
    void install() {
        auto plan = planWatches(targetPaths());
        do {
            plan_ = std::move(plan);
            FileDescriptor inotify(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
            Folders folders;
            for (const auto& [folder, mask] : plan_) {
                int watch =
                    inotify_add_watch(inotify.number(), folder.c_str(), mask | IN_MASK_ADD | IN_ONLYDIR);
                if (watch >= 0) {
                    folders[watch].push_back(folder);
                } else if (errno != ENOENT && errno != ENOTDIR && (errno != EACCES || (mask & IN_CREATE))) {
                    // Not reported: what is gone again, and folders above that may not be listed.
                    reportUnwatched(folder, errno);
                }
            }
            // Events of the old watches are still handled; from here on the new ones see everything.
            readEvents();
            inotify_ = std::move(inotify);
            folders_ = std::move(folders);
            plan = planWatches(targetPaths());
        } while (plan != plan_);
        isPlanDoubtful_ = false;
    }

    void reportUnwatched(const fs::path& folder, int reason) {
        if (!diagnostics_) return;
        std::string why = reason == ENOSPC || reason == EBADF
                              ? "the system's limit of watches is reached (fs.inotify)"
                              : std::generic_category().message(reason);
        diagnostics_->report(
            {Diagnostic::Severity::warning, folder, {}, "", "changes are not noticed: " + why});
    }

    Clock::time_point dueAt() const {
        return std::min(lastEvent_ + quiet_, firstEvent_ + longestBurst * quiet_);
    }

    bool waitForEvents() {
        int timeout = -1;
        if (!touched_.empty()) {
            auto left = std::chrono::ceil<std::chrono::milliseconds>(dueAt() - Clock::now());
            timeout = static_cast<int>(std::max<std::int64_t>(0, left.count()));
        }
        std::array<pollfd, 2> sources{{{wake_.number(), POLLIN, 0}, {inotify_.number(), POLLIN, 0}}};
        return poll(sources.data(), sources.size(), timeout) >= 0 || errno == EINTR;
    }

    void readEvents() {
        alignas(inotify_event) std::array<char, 16 * 1024> buffer;
        while (true) {
            ssize_t size = read(inotify_.number(), buffer.data(), buffer.size());
            if (size <= 0) return;
            for (const char* at = buffer.data(); at < buffer.data() + size;) {
                const auto* event = reinterpret_cast<const inotify_event*>(at);
                at += sizeof(inotify_event) + event->len;
                take(*event);
            }
        }
    }

    void take(const inotify_event& event) {
        if (event.mask & IN_Q_OVERFLOW) {
            isPlanDoubtful_ = true;
            for (std::size_t i = 0; i < targets_.size(); ++i)
                touch(i);
            return;
        }
        auto folders = folders_.find(event.wd);
        if (folders == folders_.end()) return;
        for (const fs::path& folder : folders->second) {
            fs::path place = event.len > 0 ? folder / event.name : folder;
            for (std::size_t i = 0; i < targets_.size(); ++i) {
                if (targets_[i].isTouchedBy(place)) touch(i);
            }
        }
    }

    void touch(std::size_t target) {
        lastEvent_ = Clock::now();
        if (touched_.empty()) firstEvent_ = lastEvent_;
        touched_.insert(target);
    }

    void notify() {
        // Watched again before the callback reads: what changes after it has read is noticed.
        if (isPlanDoubtful_ || planWatches(targetPaths()) != plan_ || hasLostWatch()) install();
        std::vector<fs::path> changed;
        for (std::size_t index : touched_) {
            Target& target = targets_[index];
            bool wasThere = std::exchange(target.isThere, target.exists());
            target.resolve();
            if (wasThere || target.isThere) changed.push_back(target.path);
        }
        touched_.clear();
        if (!changed.empty() && !isStopped_) callback_(changed);
    }

    /// A folder that was replaced by another one of the same name: the plan is the same, the watch is not.
    bool hasLostWatch() const {
        for (const auto& [watch, folders] : folders_) {
            for (const fs::path& folder : folders) {
                int now = inotify_add_watch(inotify_.number(), folder.c_str(),
                                            plan_.at(folder) | IN_MASK_ADD | IN_ONLYDIR);
                if (now != watch) return true;
            }
        }
        return false;
    }

    std::vector<Target> targets_;
    FileWatcher::Callback callback_;
    std::shared_ptr<DiagnosticsSink> diagnostics_;
    Clock::duration quiet_;
    FileDescriptor wake_;
    FileDescriptor inotify_;
    FileWatchPlan plan_;
    Folders folders_;
    std::set<std::size_t> touched_;
    Clock::time_point firstEvent_;
    Clock::time_point lastEvent_;
    bool isPlanDoubtful_ = false;
    std::atomic<bool> isStopped_ = false;
};

}  // namespace

struct FileWatcher::State {
    std::shared_ptr<Watch> watch;
    std::thread thread;
};

FileWatcher::FileWatcher(std::vector<fs::path> paths, Callback callback, double quietSeconds,
                         std::shared_ptr<DiagnosticsSink> diagnostics)
    : state_(std::make_unique<State>()) {
    state_->watch =
        std::make_shared<Watch>(std::move(paths), std::move(callback), quietSeconds, std::move(diagnostics));
    state_->thread = std::thread([watch = state_->watch] { watch->run(); });
}

FileWatcher::~FileWatcher() {
    state_->watch->stop();
    if (state_->thread.get_id() == std::this_thread::get_id()) {
        state_->thread.detach();  // destroyed by its own callback: the thread ends after it
    } else {
        state_->thread.join();
    }
}

}  // namespace platform
