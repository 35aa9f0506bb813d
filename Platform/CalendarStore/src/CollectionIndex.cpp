#include "CollectionIndex.h"

#include "SeriesBuilder.h"

#include <algorithm>

namespace platform {
namespace {

constexpr double day = 86400;
/// A kept interval reaches this far around the question, and grows to this length at most.
constexpr double daysBefore = 1;
constexpr double daysAfter = 9;
constexpr double longestWindow = 62 * day;
/// Items whose texts stay in memory, at most.
constexpr std::size_t maximumDetails = 4096;

}  // namespace

struct CollectionIndex::Window {
    struct Entry {
        Occurrence occurrence;
        const Series* series;
        EKEventRef event;
    };

    Date from;
    Date to;
    /// By start; `latestEnd` is the latest end up to each.
    std::vector<Entry> entries;
    std::vector<Date> latestEnd;
    /// False: the entries are only the first of too many.
    bool complete = true;
    /// A series has so many occurrences that only what is asked for is worked out.
    bool neverWide = false;
    std::unordered_map<const ScannedItem*, std::shared_ptr<const ItemDetails>> details;
};

CollectionIndex::CollectionIndex(std::vector<std::shared_ptr<const ScannedFile>> files,
                                 const std::string& identifier, CollectionSettings settings)
    : settings_(std::move(settings)), window_(std::make_unique<Window>()) {
    const auto& zone = settings_.calendar.timeZone();
    const auto build = [&](ScannedItem::Kind kind) {
        return buildSeries(files, kind, identifier, zone, settings_.zoneInfoDirectory,
                           *settings_.diagnostics);
    };
    events_ = build(ScannedItem::Kind::event);
    tasks_ = build(ScannedItem::Kind::task);
    sortIntoLists();
}

CollectionIndex::~CollectionIndex() = default;

void CollectionIndex::sortIntoLists() {
    for (const auto& series : events_) {
        byIdentifier_.emplace(series->identifier(), series.get());
        (series->recurs() ? recurring_ : singles_).push_back(series.get());
    }
    for (const auto& series : tasks_)
        byIdentifier_.emplace(series->identifier(), series.get());
    std::sort(singles_.begin(), singles_.end(),
              [](const Series* a, const Series* b) { return a->firstMoment() < b->firstMoment(); });
    for (const auto* series : singles_) {
        const auto end = series->lastMoment().value_or(series->firstMoment());
        latestEnd_.push_back(latestEnd_.empty() ? end : std::max(latestEnd_.back(), end));
    }
    std::sort(recurring_.begin(), recurring_.end(), [](const Series* a, const Series* b) {
        if (!a->lastMoment() || !b->lastMoment()) return !a->lastMoment() && b->lastMoment();
        return *a->lastMoment() > *b->lastMoment();
    });
}

bool CollectionIndex::collect(Date from, Date to,
                              std::vector<std::pair<Occurrence, const Series*>>& into) const {
    bool complete = true;
    std::vector<Occurrence> found;
    const auto add = [&](const Series* series) {
        found.clear();
        if (!series->occurrences(from, to, found)) {
            complete = false;
            const auto& record = series->master() ? *series->master() : series->overrides().front();
            settings_.diagnostics->report({.file = record.file->path,
                                           .line = record.item->line,
                                           .field = record.item->uid,
                                           .text = "too many occurrences; only the first ones are shown"});
        }
        for (const auto& occurrence : found)
            into.emplace_back(occurrence, series);
    };
    const auto firstTouching =
        std::lower_bound(latestEnd_.begin(), latestEnd_.end(), from) - latestEnd_.begin();
    for (auto i = static_cast<std::size_t>(firstTouching); i < singles_.size(); ++i) {
        if (singles_[i]->firstMoment() > to) break;
        add(singles_[i]);
    }
    for (const auto* series : recurring_) {
        if (series->lastMoment() && *series->lastMoment() < from) break;
        if (series->firstMoment() <= to) add(series);
    }
    return complete;
}

void CollectionIndex::widen(Date from, Date to) const {
    auto& window = *window_;
    const bool isInside =
        window.complete && from >= window.from && to <= window.to && window.from < window.to;
    if (isInside) return;
    auto wantedFrom = from.addingTimeInterval(-daysBefore * day);
    auto wantedTo = to.addingTimeInterval(daysAfter * day);
    if (window.from < window.to) {
        const auto joinedFrom = std::min(window.from, wantedFrom);
        const auto joinedTo = std::max(window.to, wantedTo);
        if (joinedTo.timeIntervalSince(joinedFrom) <= longestWindow) {
            wantedFrom = joinedFrom;
            wantedTo = joinedTo;
        }
    }
    // Too much for a wide interval may still fit the one asked for.
    std::vector<std::pair<Occurrence, const Series*>> found;
    if (window.neverWide || !collect(wantedFrom, wantedTo, found)) {
        window.neverWide = true;
        found.clear();
        wantedFrom = from;
        wantedTo = to;
        window.complete = collect(from, to, found);
    }
    window.from = wantedFrom;
    window.to = wantedTo;
    std::sort(found.begin(), found.end(),
              [](const auto& a, const auto& b) { return a.first.start < b.first.start; });
    window.entries.clear();
    window.latestEnd.clear();
    window.entries.reserve(found.size());
    for (const auto& [occurrence, series] : found) {
        window.entries.push_back({occurrence, series, nullptr});
        window.latestEnd.push_back(
            window.latestEnd.empty() ? occurrence.end : std::max(window.latestEnd.back(), occurrence.end));
    }
}

void CollectionIndex::appendEvents(Date from, Date to, const EKCalendarRef& calendar,
                                   std::vector<EKEventRef>& into) const {
    std::lock_guard lock(mutex_);
    if (to.timeIntervalSince(from) > longestWindow) {
        std::vector<std::pair<Occurrence, const Series*>> found;
        collect(from, to, found);
        for (const auto& [occurrence, series] : found)
            into.push_back(eventOf(occurrence, *series, calendar));
        return;
    }
    widen(from, to);
    auto& window = *window_;
    const auto first = std::lower_bound(window.latestEnd.begin(), window.latestEnd.end(), from);
    for (auto i = static_cast<std::size_t>(first - window.latestEnd.begin()); i < window.entries.size();
         ++i) {
        auto& entry = window.entries[i];
        if (entry.occurrence.start > to) break;
        if (entry.occurrence.end < from) continue;
        if (!entry.event) entry.event = eventOf(entry.occurrence, *entry.series, calendar);
        into.push_back(entry.event);
    }
}

std::shared_ptr<const ItemDetails> CollectionIndex::detailsOf(const ItemRecord& record) const {
    auto& kept = window_->details;
    if (const auto known = kept.find(record.item); known != kept.end()) return known->second;
    if (kept.size() >= maximumDetails) kept.clear();
    auto details = std::make_shared<const ItemDetails>(
        ItemDetails::parse(record.item->text, settings_.ownAddresses, settings_.calendar.timeZone()));
    return kept.emplace(record.item, std::move(details)).first->second;
}

EKEventRef CollectionIndex::event(const std::string& identifier, const EKCalendarRef& calendar) const {
    const auto known = byIdentifier_.find(identifier);
    if (known == byIdentifier_.end()) return nullptr;
    const auto& series = *known->second;
    const auto& record = series.master() ? *series.master() : series.overrides().front();
    if (record.item->kind != ScannedItem::Kind::event) return nullptr;
    std::lock_guard lock(mutex_);
    // The first occurrence is near the first moment, unless it was taken out.
    for (const double days : {2.0, 62.0, 800.0, 15000.0}) {
        std::vector<Occurrence> found;
        const auto from = series.firstMoment();
        series.occurrences(from, std::max(from, series.firstMoment().addingTimeInterval(days * day)), found);
        const auto first = std::min_element(found.begin(), found.end(),
                                            [](const auto& a, const auto& b) { return a.start < b.start; });
        if (first != found.end()) return eventOf(*first, series, calendar);
    }
    return nullptr;
}

}  // namespace platform
