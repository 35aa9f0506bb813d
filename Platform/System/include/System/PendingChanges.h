#pragma once

#include <System/DeferredWrites.h>
#include <System/FileLock.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace platform {

/// The way to what a locked file holds. While another process holds the lock and `DeferredWrites` are on, a
/// change is kept, laid over what is read, and stored by another thread once the lock is free. Without them,
/// a change waits with the patience of `FileLock`. Any thread.
template <class Contents>
class PendingChanges {
  public:
    /// Applied at once and perhaps again when it is stored, then on another thread: it owns what it captures.
    using Change = std::function<void(Contents&)>;
    using Snapshot = std::shared_ptr<const Contents>;
    /// Kept until the last change is stored. None of them may use the owner of this object.
    struct File {
        std::filesystem::path path;
        /// Nothing where the file cannot be read and so must not be changed.
        std::function<Snapshot()> read;
        /// Reads, changes and writes under the lock; reports what fails. `names` names what changes.
        std::function<bool(const FileLock&, const std::string& names, const Change&)> store;
        /// Reports that the lock could not be had.
        std::function<void(const std::string& names, const std::error_code&)> reportLock;
        /// Called after what is read changed with no change of the file, or the reverse.
        std::function<void()> didDefer = [] {};
    };

    explicit PendingChanges(File file) : state_(std::make_shared<State>(std::move(file))) {}

    /// What the file holds with the pending changes.
    Snapshot read() const { return read(state_->file.read); }
    /// The same, by another way of reading the file.
    Snapshot read(const std::function<Snapshot()>& stored) const {
        std::lock_guard guard(state_->mutex);
        return state_->withPending(stored());
    }

    /// False when the change could not be stored. True may also mean that it is pending.
    bool update(const std::string& name, const Change& change) {
        if (!DeferredWrites::areOn()) {
            std::error_code error;
            const auto lock = FileLock::of(state_->file.path, error);
            if (lock) return state_->file.store(*lock, name, change);
            state_->file.reportLock(name, error);
            return false;
        }
        if (const auto result = state_->storeOrKeep(name, change)) return *result;
        state_->file.didDefer();
        return true;
    }

  private:
    struct State : std::enable_shared_from_this<State> {
        explicit State(File given) : file(std::move(given)) {}

        const File file;
        /// Never held while waiting for the file's lock.
        std::mutex mutex;
        std::vector<std::pair<std::string, Change>> pending;
        /// The pending changes on top of `base`.
        Snapshot base;
        Snapshot laidOver;

        Snapshot withPending(Snapshot stored) {
            if (pending.empty() || !stored) return stored;
            if (stored != base) {
                auto contents = std::make_shared<Contents>(*stored);
                for (const auto& [name, change] : pending)
                    change(*contents);
                laidOver = std::move(contents);
                base = std::move(stored);
            }
            return laidOver;
        }

        /// Nothing when the change is now pending.
        std::optional<bool> storeOrKeep(const std::string& name, const Change& change) {
            std::lock_guard guard(mutex);
            if (pending.empty()) {
                std::error_code error;
                if (const auto lock = FileLock::of(file.path, error, FileLock::Wait::never))
                    return file.store(*lock, name, change);
                if (error != FileLock::heldError()) {
                    file.reportLock(name, error);
                    return false;
                }
            }
            Snapshot stored = file.read();
            const Snapshot before = withPending(stored);
            if (!before) return false;
            auto after = std::make_shared<Contents>(*before);
            change(*after);
            if (*after == *before) return true;
            pending.emplace_back(name, change);
            base = std::move(stored);
            laidOver = std::move(after);
            if (pending.size() == 1) {
                DeferredWrites::run([self = this->shared_from_this()] { self->storePending(); },
                                    [self = this->shared_from_this()] { self->giveUp(); });
            }
            return std::nullopt;
        }

        /// With their names, separated by commas.
        std::pair<std::string, std::vector<std::pair<std::string, Change>>> takePending() {
            auto taken = std::exchange(pending, {});
            base.reset();
            laidOver.reset();
            std::string names;
            for (const auto& [name, change] : taken) {
                if ((", " + names + ", ").find(", " + name + ", ") != std::string::npos) continue;
                names += (names.empty() ? "" : ", ") + name;
            }
            return {std::move(names), std::move(taken)};
        }

        void storePending() {
            std::error_code error;
            const auto lock = FileLock::of(file.path, error, FileLock::Wait::untilFree);
            {
                std::lock_guard guard(mutex);
                const auto taken = takePending();
                const auto& changes = taken.second;
                if (changes.empty()) return;
                if (!lock) {
                    file.reportLock(taken.first, error);
                } else {
                    file.store(*lock, taken.first, [&changes](Contents& contents) {
                        for (const auto& [name, change] : changes)
                            change(contents);
                    });
                }
            }
            file.didDefer();
        }

        void giveUp() {
            std::lock_guard guard(mutex);
            const auto [names, changes] = takePending();
            if (!changes.empty()) file.reportLock(names, FileLock::heldError());
        }
    };

    std::shared_ptr<State> state_;
};

}  // namespace platform
