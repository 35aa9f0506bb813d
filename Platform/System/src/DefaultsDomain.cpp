#include "DefaultsFile.h"

#include <System/DefaultsDomain.h>
#include <System/FileWatcher.h>
#include <System/MainQueue.h>
#include <System/PendingChanges.h>

#include <algorithm>
#include <mutex>

namespace platform {
namespace {

/// Settings shall show soon after a change, and a write is one rename anyway.
constexpr double quietSeconds = 0.02;

std::optional<PropertyValue> valueIn(const PropertyDictionary& values, std::string_view key) {
    const PropertyValue* found = values.find(key);
    return found ? std::optional(*found) : std::nullopt;
}

}  // namespace

class DefaultsDomain::Observation : public std::enable_shared_from_this<Observation> {
  public:
    Observation(std::shared_ptr<State> state, std::vector<std::string> keys, std::function<void()> observer)
        : state_(std::move(state)), keys_(std::move(keys)), observer_(std::move(observer)) {}

    /// Gives the values that the first comparison starts from.
    void remember(const PropertyDictionary& values) {
        std::lock_guard lock(mutex_);
        last_ = observed(values);
    }
    void compare(const PropertyDictionary& values) {
        std::lock_guard lock(mutex_);
        auto now = observed(values);
        if (now == last_) return;
        last_ = std::move(now);
        if (std::exchange(isPending_, true)) return;
        MainQueue::shared().async([weak = weak_from_this()] {
            if (auto self = weak.lock()) self->call();
        });
    }

  private:
    std::vector<std::optional<PropertyValue>> observed(const PropertyDictionary& values) const {
        std::vector<std::optional<PropertyValue>> found;
        for (const std::string& key : keys_)
            found.push_back(valueIn(values, key));
        return found;
    }
    void call() {
        {
            std::lock_guard lock(mutex_);
            isPending_ = false;
        }
        observer_();
    }

    std::shared_ptr<State> state_;
    const std::vector<std::string> keys_;
    const std::function<void()> observer_;
    std::mutex mutex_;
    std::vector<std::optional<PropertyValue>> last_;
    bool isPending_ = false;
};

struct DefaultsDomain::State {
    State(std::filesystem::path path, std::shared_ptr<DiagnosticsSink> sink)
        : diagnostics(std::move(sink)), file(std::make_shared<DefaultsFile>(std::move(path), diagnostics)) {}

    static std::shared_ptr<State> make(std::filesystem::path path, std::shared_ptr<DiagnosticsSink> sink) {
        auto state = std::make_shared<State>(std::move(path), std::move(sink));
        // Pending changes may outlive the domain.
        const auto file = state->file;
        state->changes =
            std::make_unique<PendingChanges<PropertyDictionary>>(PendingChanges<PropertyDictionary>::File{
                .path = file->path(),
                .read = [file] { return file->readIfPossible(); },
                .store =
                    [file](const FileLock& lock, const std::string& names, const auto& change) {
                        const auto stored = file->readForChange(lock);
                        if (!stored) return false;
                        PropertyDictionary values = *stored;
                        change(values);
                        return values == *stored || file->write(lock, values, names);
                    },
                .reportLock = [file](const std::string& names,
                                     const std::error_code& error) { file->reportLock(names, error); },
                .didDefer =
                    [weak = std::weak_ptr(state)] {
                        if (const auto living = weak.lock()) living->notifyObservers();
                    }});
        return state;
    }

    std::shared_ptr<const PropertyDictionary> read() const {
        auto values = changes->read();
        return values ? values : DefaultsFile::noValues();
    }

    void notifyObservers() {
        auto values = read();
        std::vector<std::shared_ptr<Observation>> living;
        {
            std::lock_guard lock(mutex);
            for (const auto& observation : observations) {
                if (auto each = observation.lock()) living.push_back(std::move(each));
            }
        }
        for (const auto& observation : living)
            observation->compare(*values);
    }

    const std::shared_ptr<DiagnosticsSink> diagnostics;
    const std::shared_ptr<DefaultsFile> file;
    std::unique_ptr<PendingChanges<PropertyDictionary>> changes;
    std::mutex mutex;
    std::vector<std::weak_ptr<Observation>> observations;
    /// Made with the first observation. Last member: its thread ends before the rest goes.
    std::unique_ptr<FileWatcher> watcher;
};

DefaultsDomain::DefaultsDomain(std::filesystem::path file, std::shared_ptr<DiagnosticsSink> diagnostics)
    : state_(State::make(std::move(file), std::move(diagnostics))) {}
DefaultsDomain::~DefaultsDomain() = default;

const std::filesystem::path& DefaultsDomain::file() const {
    return state_->file->path();
}

std::optional<PropertyValue> DefaultsDomain::value(std::string_view key) const {
    return valueIn(*state_->read(), key);
}

PropertyDictionary DefaultsDomain::values() const {
    return *state_->read();
}

std::shared_ptr<const PropertyDictionary> DefaultsDomain::snapshot() const {
    return state_->read();
}

bool DefaultsDomain::exists() const {
    return state_->file->exists();
}

bool DefaultsDomain::setValue(std::string_view key, std::optional<PropertyValue> value) {
    // Asked without the lock first: most repeated writes change nothing, and a read-only folder has no lock.
    if (auto values = state_->changes->read(); values && valueIn(*values, key) == value) return true;
    return update(key, [value = std::move(value)](const std::optional<PropertyValue>&) { return value; });
}

bool DefaultsDomain::update(std::string_view key, const Change& change) {
    return state_->changes->update(std::string(key),
                                   [key = std::string(key), change](PropertyDictionary& values) {
                                       const auto before = valueIn(values, key);
                                       auto after = change(before);
                                       if (after == before) return;
                                       if (after) {
                                           values.set(key, std::move(*after));
                                       } else {
                                           values.remove(key);
                                       }
                                   });
}

bool DefaultsDomain::updateTogether(DefaultsDomain& first, DefaultsDomain& second,
                                    const Transaction& transaction) {
    DefaultsFile* a = first.state_->file.get();
    DefaultsFile* b = second.state_->file.get();
    auto isFirstLower = a->path() < b->path();
    if (a->path() == b->path()) return false;  // the second lock would wait for the first for ever
    const auto lockOf = [](DefaultsFile& file) {
        std::error_code error;
        auto lock = FileLock::of(file.path(), error);
        if (!lock) file.reportLock("", error);
        return lock;
    };
    const auto lower = lockOf(isFirstLower ? *a : *b);
    const auto higher = lower ? lockOf(isFirstLower ? *b : *a) : nullptr;
    if (!lower || !higher) return false;
    auto& firstLock = isFirstLower ? *lower : *higher;
    auto& secondLock = isFirstLower ? *higher : *lower;
    auto storedFirst = a->readForChange(firstLock);
    auto storedSecond = b->readForChange(secondLock);
    if (!storedFirst || !storedSecond) return false;

    PropertyDictionary firstValues = *storedFirst;
    PropertyDictionary secondValues = *storedSecond;
    transaction(firstValues, secondValues);
    if (secondValues != *storedSecond && !b->write(secondLock, secondValues, "")) return false;
    return firstValues == *storedFirst || a->write(firstLock, firstValues, "");
}

std::shared_ptr<DefaultsDomain::Observation> DefaultsDomain::observe(std::vector<std::string> keys,
                                                                     std::function<void()> observer) {
    auto observation = std::make_shared<Observation>(state_, std::move(keys), std::move(observer));
    {
        std::lock_guard lock(state_->mutex);
        if (!state_->watcher) {
            state_->watcher = std::make_unique<FileWatcher>(
                std::vector{state_->file->path()},
                [weak = std::weak_ptr(state_)](const auto&) {
                    if (auto state = weak.lock()) state->notifyObservers();
                },
                quietSeconds, state_->diagnostics);
        }
        // Read after watching began, known to the watcher only then: no change falls between.
        observation->remember(*state_->read());
        std::erase_if(state_->observations, [](const auto& each) { return each.expired(); });
        state_->observations.push_back(observation);
    }
    // The others were notified of a change before they knew this one.
    observation->compare(*state_->read());
    return observation;
}

std::int64_t DefaultsDomain::integer(std::string_view key) const {
    auto values = state_->read();
    const PropertyValue* found = values->find(key);
    return found ? found->asInteger().value_or(0) : 0;
}

}  // namespace platform
