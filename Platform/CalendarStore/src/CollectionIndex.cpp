#include "CollectionIndex.h"

#include "SeriesBuilder.h"

#include "MadeRecords.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace platform {
namespace {

constexpr double day = 86400;
/// A kept interval reaches this far around the question. It grows to cover the one before, too, as long as it
/// does not get longer than this and than what was asked for.
constexpr double daysBefore = 1;
constexpr double daysAfter = 9;
constexpr double commonWindow = 62 * day;
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
    /// A series has so many occurrences that only the queried interval is expanded.
    bool neverWide = false;
    std::unordered_map<const ScannedItem*, std::shared_ptr<const ItemDetails>> details;
};

CollectionIndex::CollectionIndex(std::vector<std::shared_ptr<const ScannedFile>> files,
                                 const std::string& identifier, CollectionSettings settings,
                                 const CollectionIndex* former)
    : settings_(std::move(settings)),
      window_(std::make_unique<Window>()),
      made_(std::make_unique<MadeRecords>()) {
    const auto& zone = settings_.calendar.timeZone();
    const auto build = [&](ScannedItem::Kind kind, const SeriesList& before) {
        return buildSeries(files, kind, identifier, zone, settings_.zoneInfoDirectory, *settings_.diagnostics,
                           before);
    };
    events_ = build(ScannedItem::Kind::event, former ? former->events_ : SeriesList());
    tasks_ = build(ScannedItem::Kind::task, former ? former->tasks_ : SeriesList());
    sortIntoLists();
    if (former) takeOver(*former, files);
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

void CollectionIndex::takeOver(const CollectionIndex& former,
                               const std::vector<std::shared_ptr<const ScannedFile>>& files) {
    std::lock_guard lock(former.mutex_);
    if (former.settings_.ownAddresses != settings_.ownAddresses) return;
    std::unordered_set<const ScannedFile*> same;
    for (const auto& file : files)
        same.insert(file.get());
    for (const auto& entry : former.window_->entries) {
        const ItemRecord& record = *entry.occurrence.record;
        if (!entry.event || !same.contains(record.file.get())) continue;
        made_->add(*record.item, entry.event);
        const auto details = former.window_->details.find(record.item);
        if (details != former.window_->details.end()) window_->details.insert(*details);
    }
    made_->takeTasks(*former.made_, same);
}

void CollectionIndex::reportTooMany(const Series& series) const {
    const auto& record = series.master() ? *series.master() : series.overrides().front();
    settings_.diagnostics->report({.file = record.file->path,
                                   .line = record.item->line,
                                   .field = record.item->uid,
                                   .text = "too many occurrences; only the first ones are shown"});
}

CollectionIndex::Collected CollectionIndex::collect(Date from, Date to, bool onlyComplete) const {
    Collected result;
    ExpansionBudget budget;
    std::vector<Occurrence> found;
    const auto add = [&](const Series* series) {
        found.clear();
        if (!series->occurrences(from, to, found, budget)) result.cut.push_back(series);
        for (const auto& occurrence : found)
            result.occurrences.emplace_back(occurrence, series);
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
        if (onlyComplete && !result.cut.empty()) break;
    }
    return result;
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
        const auto longest = std::max(commonWindow, wantedTo.timeIntervalSince(wantedFrom));
        if (joinedTo.timeIntervalSince(joinedFrom) <= longest) {
            wantedFrom = joinedFrom;
            wantedTo = joinedTo;
        }
    }
    // Too much for a wide interval may still fit the one asked for.
    Collected collected;
    if (!window.neverWide) collected = collect(wantedFrom, wantedTo, true);
    if (window.neverWide || !collected.cut.empty()) {
        window.neverWide = true;
        wantedFrom = from;
        wantedTo = to;
        collected = collect(from, to, false);
        for (const Series* series : collected.cut)
            reportTooMany(*series);
        window.complete = collected.cut.empty();
    }
    auto& found = collected.occurrences;
    window.from = wantedFrom;
    window.to = wantedTo;
    std::sort(found.begin(), found.end(),
              [](const auto& a, const auto& b) { return a.first.start < b.first.start; });
    for (const auto& entry : window.entries) {
        if (entry.event) made_->add(*entry.occurrence.record->item, entry.event);
    }
    window.entries.clear();
    window.latestEnd.clear();
    window.entries.reserve(found.size());
    for (const auto& [occurrence, series] : found) {
        window.entries.push_back({occurrence, series, made_->event(occurrence, *series)});
        window.latestEnd.push_back(
            window.latestEnd.empty() ? occurrence.end : std::max(window.latestEnd.back(), occurrence.end));
    }
    made_->forgetEvents();
}

void CollectionIndex::appendEvents(Date from, Date to, const EKCalendarRef& calendar,
                                   std::vector<EKEventRef>& into) const {
    std::lock_guard lock(mutex_);
    widen(from, to);
    auto& window = *window_;
    const auto first = std::lower_bound(window.latestEnd.begin(), window.latestEnd.end(), from);
    for (auto i = static_cast<std::size_t>(first - window.latestEnd.begin()); i < window.entries.size();
         ++i) {
        auto& entry = window.entries[i];
        if (entry.occurrence.start > to) break;
        if (entry.occurrence.end < from) continue;
        if (!entry.event || entry.event->calendar != calendar)
            entry.event = eventOf(entry.occurrence, *entry.series, calendar);
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
        ExpansionBudget budget;
        series.occurrences(from, std::max(from, series.firstMoment().addingTimeInterval(days * day)), found,
                           budget);
        const auto first = std::min_element(found.begin(), found.end(),
                                            [](const auto& a, const auto& b) { return a.start < b.start; });
        if (first != found.end()) return eventOf(*first, series, calendar);
    }
    return nullptr;
}

}  // namespace platform
