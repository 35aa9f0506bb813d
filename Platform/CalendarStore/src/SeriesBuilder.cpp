#include "SeriesBuilder.h"

#include "Identifiers.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <unordered_map>

namespace platform {
namespace {

struct Found {
    std::shared_ptr<const ScannedFile> file;
    const ScannedItem* item;
};

struct Group {
    std::string uid;
    std::vector<Found> masters;
    std::vector<Found> overrides;
};

/// Masters, then overrides, in the order of the files.
std::vector<const ScannedItem*> itemsOf(const Group& group) {
    std::vector<const ScannedItem*> items;
    items.reserve(group.masters.size() + group.overrides.size());
    for (const auto* list : {&group.masters, &group.overrides}) {
        for (const Found& found : *list)
            items.push_back(found.item);
    }
    return items;
}

const ScannedItem* firstItemOf(const Group& group) {
    return (group.masters.empty() ? group.overrides : group.masters).front().item;
}

bool isOlder(const Found& a, const Found& b) {
    return std::tie(a.item->sequence, a.item->modified, a.file->path) <
           std::tie(b.item->sequence, b.item->modified, b.file->path);
}

/// Items without a UID are distinguished by their content.
std::string identityOf(const ScannedItem& item) {
    if (!item.uid.empty()) return item.uid;
    std::string identity(1, '\0');
    if (item.start) identity += std::to_string(secondsOf(item.start->local));
    if (item.end) identity += "/" + std::to_string(secondsOf(item.end->local));
    return identity + item.text;
}

class Builder {
  public:
    Builder(const std::string& calendarIdentifier, const TimeZone& userZone,
            const std::filesystem::path& zoneInfoDirectory, DiagnosticsSink& diagnostics)
        : calendarIdentifier_(calendarIdentifier),
          userZone_(userZone),
          zoneInfoDirectory_(zoneInfoDirectory),
          diagnostics_(diagnostics) {}

    std::shared_ptr<const Series> build(const Group& group) {
        std::optional<ItemRecord> master;
        TimeResolver* resolver = nullptr;
        if (!group.masters.empty()) {
            const auto& chosen = newest(group.masters);
            resolver = &resolverOf(chosen);
            master = record(chosen, *resolver, {});
        }
        const auto floatingZone =
            master && !master->start.isDate ? std::optional(master->start.zone) : std::nullopt;
        // By the occurrence that they change, so that of several for one the newest stays.
        std::map<std::pair<bool, double>, std::vector<Found>> byOccurrence;
        for (const auto& found : group.overrides) {
            const auto id = resolverOf(found).resolve(*found.item->recurrenceId, *found.item, floatingZone);
            const bool asDay = id.isDate || (master && master->start.isDate);
            byOccurrence[{asDay, asDay ? static_cast<double>(id.day())
                                       : id.instant().timeIntervalSinceReferenceDate()}]
                .push_back(found);
        }
        std::vector<ItemRecord> overrides;
        for (const auto& [key, candidates] : byOccurrence) {
            const auto& chosen = newest(candidates);
            overrides.push_back(record(chosen, resolverOf(chosen), floatingZone));
        }
        return std::make_shared<const Series>(eventIdentifier(calendarIdentifier_, group.uid),
                                              std::move(master), std::move(overrides), resolver,
                                              itemsOf(group));
    }

  private:
    const Found& newest(const std::vector<Found>& candidates) {
        const Found* best = &candidates.front();
        for (const auto& candidate : candidates) {
            // Of equals the later one in the file.
            if (!isOlder(candidate, *best)) best = &candidate;
        }
        if (candidates.size() > 1) reportRepeated(candidates, *best);
        return *best;
    }

    void reportRepeated(const std::vector<Found>& candidates, const Found& best) {
        const auto& other = candidates[candidates.front().item == best.item ? 1 : 0];
        const auto times =
            candidates.size() == 2 ? std::string("twice") : std::to_string(candidates.size()) + " times";
        diagnostics_.report({.severity = Diagnostic::Severity::info,
                             .file = other.file->path,
                             .line = other.item->line,
                             .field = other.item->uid,
                             .text = "the same UID " + times + "; the newest one in " +
                                     best.file->path.filename().string() + ", line " +
                                     std::to_string(best.item->line) + ", counts"});
    }

    TimeResolver& resolverOf(const Found& found) {
        auto& resolver = resolvers_[found.file.get()];
        if (!resolver) {
            resolver = std::make_unique<TimeResolver>(
                found.file->path, userZone_, ZoneLookup(zoneInfoDirectory_, found.file->zones, zones_),
                diagnostics_);
        }
        return *resolver;
    }

    static ItemRecord record(const Found& found, TimeResolver& resolver,
                             const std::optional<TimeZone>& floatingZone) {
        const auto& item = *found.item;
        const auto& anchor = item.start ? item.start : item.end;
        ItemRecord result{found.file, &item, {{}, resolver.userZone(), true}, {}, {}};
        if (anchor) result.start = resolver.resolve(*anchor, item);
        result.length = item.kind == ScannedItem::Kind::event ? resolver.lengthOf(item, result.start)
                                                              : resolver.timeToDue(item, result.start);
        if (item.recurrenceId) result.recurrenceId = resolver.resolve(*item.recurrenceId, item, floatingZone);
        return result;
    }

    const std::string& calendarIdentifier_;
    const TimeZone& userZone_;
    const std::filesystem::path& zoneInfoDirectory_;
    DiagnosticsSink& diagnostics_;
    ZoneDefinitionCache zones_;
    std::unordered_map<const ScannedFile*, std::unique_ptr<TimeResolver>> resolvers_;
};

/// The series before a change, by their first item.
class FormerSeries {
  public:
    explicit FormerSeries(const SeriesList& former) {
        byItem_.reserve(former.size());
        for (const auto& series : former)
            byItem_.emplace(series->items().front(), series);
    }

    /// nullptr where the items of the group are not all those of one series.
    std::shared_ptr<const Series> find(const Group& group) const {
        const auto known = byItem_.find(firstItemOf(group));
        return known != byItem_.end() && known->second->items() == itemsOf(group) ? known->second : nullptr;
    }

  private:
    std::unordered_map<const ScannedItem*, std::shared_ptr<const Series>> byItem_;
};

}  // namespace

SeriesList buildSeries(const std::vector<std::shared_ptr<const ScannedFile>>& files, ScannedItem::Kind kind,
                       const std::string& calendarIdentifier, const TimeZone& userZone,
                       const std::filesystem::path& zoneInfoDirectory, DiagnosticsSink& diagnostics,
                       const SeriesList& former) {
    std::vector<Group> groups;
    std::unordered_map<std::string, std::size_t> byIdentity;
    std::unordered_map<std::string, int> repeats;
    for (const auto& file : files) {
        for (const auto& item : file->items) {
            if (item.kind != kind) continue;
            auto identity = identityOf(item);
            // Without a UID nothing says that two items mean the same, however alike they are.
            if (item.uid.empty()) identity += '#' + std::to_string(++repeats[identity]);
            const auto [at, isNew] = byIdentity.emplace(identity, groups.size());
            if (isNew) groups.push_back({std::move(identity), {}, {}});
            auto& group = groups[at->second];
            (item.recurrenceId ? group.overrides : group.masters).push_back({file, &item});
        }
    }
    Builder builder(calendarIdentifier, userZone, zoneInfoDirectory, diagnostics);
    const FormerSeries known(former);
    SeriesList result;
    result.reserve(groups.size());
    for (const auto& group : groups) {
        auto same = known.find(group);
        result.push_back(same ? std::move(same) : builder.build(group));
    }
    return result;
}

}  // namespace platform
