#include <WidgetHost/WidgetScheduler.h>

#include <System/MainQueue.h>
#include <WidgetHost/TimelinePlayer.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <mutex>
#include <set>
#include <utility>

namespace platform {

namespace {

Date nextWholeMinute(Date now) {
    const double seconds = now.timeIntervalSinceReferenceDate();
    return Date((std::floor(seconds / 60) + 1) * 60);
}

}  // namespace

struct WidgetScheduler::Kind {
    explicit Kind(StaticConfiguration widget) : configuration(std::move(widget)) {}

    StaticConfiguration configuration;
    bool isShown = false;
    std::optional<TimelinePlayer> player;
    /// Date of the entry on the screen.
    std::optional<Date> shownDate;
    /// When to ask again if nobody asked before.
    std::optional<Date> askDate;
    std::optional<Date> askedAt;
    bool mustAskAgain = false;
    /// Requests are counted, so that an answer that was overtaken is known.
    std::uint64_t lastRequest = 0;
    std::uint64_t lastAnswer = 0;
};

/// What other threads asked for since the main thread last looked.
struct WidgetScheduler::Requests {
    std::mutex mutex;
    std::set<std::string, std::less<>> kinds;
};

std::shared_ptr<WidgetScheduler> WidgetScheduler::make(std::vector<StaticConfiguration> widgets,
                                                       World world) {
    return std::shared_ptr<WidgetScheduler>(new WidgetScheduler(std::move(widgets), std::move(world)));
}

WidgetScheduler::WidgetScheduler(std::vector<StaticConfiguration> widgets, World world)
    : world_(std::move(world)), requests_(std::make_unique<Requests>()) {
    for (StaticConfiguration& widget : widgets)
        kinds_.push_back(std::make_unique<Kind>(std::move(widget)));
}

WidgetScheduler::~WidgetScheduler() = default;

WidgetScheduler::Kind* WidgetScheduler::find(std::string_view kind) {
    const auto found =
        std::ranges::find_if(kinds_, [&](const auto& one) { return one->configuration.kind() == kind; });
    return found == kinds_.end() ? nullptr : found->get();
}

void WidgetScheduler::setShownKinds(const std::vector<std::string>& kinds) {
    std::vector<Kind*> added;
    for (const auto& kind : kinds_) {
        const bool isShown = std::ranges::find(kinds, kind->configuration.kind()) != kinds.end();
        if (isShown == kind->isShown) continue;
        kind->isShown = isShown;
        if (isShown) {
            added.push_back(kind.get());
        } else {
            kind->player.reset();
            kind->shownDate.reset();
            kind->askDate.reset();
        }
    }
    for (Kind* kind : added)
        ask(*kind);
    scheduleWake();
}

std::optional<WidgetEntry> WidgetScheduler::currentEntry(std::string_view kind) const {
    for (const auto& one : kinds_) {
        if (one->configuration.kind() == kind && one->player) return one->player->entryAt(world_.clock());
    }
    return std::nullopt;
}

void WidgetScheduler::reloadTimelines(std::string_view ofKind) {
    {
        std::lock_guard lock(requests_->mutex);
        const bool isFirst = requests_->kinds.empty();
        requests_->kinds.emplace(ofKind);
        if (!isFirst) return;
    }
    MainQueue::shared().async([weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->drainRequests();
    });
}

void WidgetScheduler::reloadAllTimelines() {
    for (const auto& kind : kinds_)
        reloadTimelines(kind->configuration.kind());
}

void WidgetScheduler::drainRequests() {
    decltype(Requests::kinds) kinds;
    {
        std::lock_guard lock(requests_->mutex);
        kinds.swap(requests_->kinds);
    }
    for (const std::string& name : kinds) {
        Kind* kind = find(name);
        if (kind && kind->isShown) ask(*kind);
    }
    scheduleWake();
}

void WidgetScheduler::ask(Kind& kind) {
    const Date now = world_.clock();
    const bool isWaiting =
        kind.askedAt && now >= *kind.askedAt && now < kind.askedAt->addingTimeInterval(patience);
    if (isWaiting) {
        kind.mustAskAgain = true;
        return;
    }
    kind.mustAskAgain = false;
    kind.askedAt = now;
    // Should no answer come.
    kind.askDate = nextWholeMinute(now.addingTimeInterval(patience));
    const std::uint64_t request = ++kind.lastRequest;
    kind.configuration.getTimeline({.family = kind.configuration.families().back()},
                                   [weak = weak_from_this(), &kind, request](WidgetTimeline timeline) {
                                       const auto self = weak.lock();
                                       if (self) self->take(kind, request, std::move(timeline));
                                   });
}

void WidgetScheduler::take(Kind& kind, std::uint64_t request, WidgetTimeline timeline) {
    if (request <= kind.lastAnswer) return;
    kind.lastAnswer = request;
    if (request == kind.lastRequest) kind.askedAt.reset();
    if (!kind.isShown) return;

    const Date now = world_.clock();
    kind.player.emplace(std::move(timeline),
                        kind.configuration.placeholder({.family = kind.configuration.families().back()}));
    const Date policy = kind.player->reloadDate();
    // Not at once: a provider whose dates are always past must not keep the machine busy.
    kind.askDate = policy > now ? policy.addingTimeInterval(policySlack) : nextWholeMinute(now);
    show(kind, true);
    if (kind.mustAskAgain && !kind.askedAt) ask(kind);
    scheduleWake();
}

void WidgetScheduler::show(Kind& kind, bool always) {
    if (!kind.player) return;
    const WidgetEntry& entry = kind.player->entryAt(world_.clock());
    if (!always && kind.shownDate == entry.date) return;
    kind.shownDate = entry.date;
    world_.show(kind.configuration.kind(), WidgetEntry(entry));
}

void WidgetScheduler::wake() {
    wakeDate_.reset();
    const Date now = world_.clock();
    for (const auto& kind : kinds_) {
        if (!kind->isShown) continue;
        show(*kind, false);
        if (kind->askDate && now >= *kind->askDate) ask(*kind);
    }
    scheduleWake();
}

void WidgetScheduler::clockChanged() {
    for (const auto& kind : kinds_) {
        if (!kind->isShown) continue;
        show(*kind, false);
        ask(*kind);
    }
    wakeDate_.reset();
    scheduleWake();
}

void WidgetScheduler::scheduleWake() {
    const Date now = world_.clock();
    std::optional<Date> next;
    auto consider = [&next](const std::optional<Date>& date) {
        if (date && (!next || *date < *next)) next = date;
    };
    for (const auto& kind : kinds_) {
        if (!kind->isShown) continue;
        consider(kind->askDate);
        if (kind->player) consider(kind->player->nextChange(now));
    }
    if (next == wakeDate_) return;
    wakeDate_ = next;
    world_.wakeAt(next);
}

}  // namespace platform
