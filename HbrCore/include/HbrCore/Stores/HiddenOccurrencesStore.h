#pragma once

#include <HbrCore/Events/HiddenOccurrences.h>
#include <HbrCore/Stores/SettingsTable.h>
#include <System/DefaultsDomain.h>

#include <functional>
#include <string>
#include <string_view>

namespace hbr {

/// Which occurrences of a series the user left out by themselves, in the shared domain under
/// "hiddenOccurrences": a list of texts "IDENTIFIER START". Whole events and series are left out by their
/// `EventSettings`. Nothing is cached. Entries that cannot be read hide nothing and stay as they are. Safe
/// from any thread; writers never lose each other's entries. Writes are false when the file could not be
/// written.
class HiddenOccurrencesStore {
  public:
    static constexpr std::string_view storageKey = SettingsTable::hiddenOccurrences;
    /// Entries whose original start is longer ago are dropped with the next write: an occurrence may have
    /// been moved far from it.
    static constexpr int keptDays = 400;

    explicit HiddenOccurrencesStore(platform::DefaultsDomainRef defaults);

    HiddenOccurrences all() const;
    /// Those of one series.
    HiddenOccurrences of(std::string_view eventIdentifier) const;
    bool hide(const Occurrence& occurrence, platform::Date now) const;
    bool show(const Occurrence& occurrence, platform::Date now) const;
    bool showAll(std::string_view eventIdentifier, platform::Date now) const;
    /// Of every series; entries that cannot be read go too.
    bool showAll() const;
    /// The series has another identifier from now on.
    bool rename(std::string_view eventIdentifier, const std::string& newIdentifier, platform::Date now) const;

  private:
    using Change = std::function<void(std::set<Occurrence>&)>;
    bool change(platform::Date now, Change change) const;

    platform::DefaultsDomainRef defaults_;
};

}  // namespace hbr
