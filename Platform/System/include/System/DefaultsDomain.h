#pragma once

#include <System/Diagnostics.h>
#include <Values/PropertyValue.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Key-value settings in one property-list file that several programs share. Every read sees the newest
/// complete write of any process. A write replaces the whole file (new file, synced, renamed) under an
/// advisory lock on a neighbouring ".lock" file: killed at any instant, the old or the new file is there,
/// and writers never lose each other's keys. Reading takes no lock and works in a read-only folder. With
/// `DeferredWrites` on, a change that meets a lock held by another process is read from now on and written
/// when the lock is free.
/// File mode 0600, folder 0700. A file that cannot be read as a property list is set aside under another
/// name with a diagnostic, never overwritten. Safe from any thread.
class DefaultsDomain {
  public:
    DefaultsDomain(std::filesystem::path file, std::shared_ptr<DiagnosticsSink> diagnostics);
    ~DefaultsDomain();
    DefaultsDomain(const DefaultsDomain&) = delete;
    DefaultsDomain& operator=(const DefaultsDomain&) = delete;

    const std::filesystem::path& file() const;

    std::optional<PropertyValue> value(std::string_view key) const;
    /// All keys as stored.
    PropertyDictionary values() const;
    /// The same; the same object as long as nothing was written.
    std::shared_ptr<const PropertyDictionary> snapshot() const;
    /// True when a file (readable or not) is or was there: a fresh installation gives false.
    bool exists() const;
    /// Nothing removes the key. Writing what is stored already writes nothing. False when the file could
    /// not be written; the reason goes to the diagnostics.
    bool setValue(std::string_view key, std::optional<PropertyValue> value);
    bool removeValue(std::string_view key) { return setValue(key, std::nullopt); }

    using Change = std::function<std::optional<PropertyValue>(const std::optional<PropertyValue>&)>;
    /// Reads, changes and writes one key under the lock; `change` gets the stored value and gives the new
    /// one (nothing removes). It must not touch this domain. Where writes are deferred it may be called
    /// again later, on another thread, so it owns what it captures.
    bool update(std::string_view key, const Change& change);

    using Transaction = std::function<void(PropertyDictionary& first, PropertyDictionary& second)>;
    /// Changes two domains under both locks (taken in the order of their paths, so two callers cannot
    /// block each other). `second` is written before `first`; `first` only when `second` could be written.
    /// False when one could not be locked or written. Never deferred: for a program's start.
    static bool updateTogether(DefaultsDomain& first, DefaultsDomain& second, const Transaction& transaction);

    class Observation;
    /// Calls `observer` on the main queue after a value of these keys changed, also by another process; once
    /// for changes that come together. Needs a running main queue; ends when the result is destroyed.
    [[nodiscard]] std::shared_ptr<Observation> observe(std::vector<std::string> keys,
                                                       std::function<void()> observer);

    /// 0 when the key is absent or has another type.
    std::int64_t integer(std::string_view key) const;

  private:
    struct State;
    std::shared_ptr<State> state_;
};

using DefaultsDomainRef = std::shared_ptr<DefaultsDomain>;

}  // namespace platform
