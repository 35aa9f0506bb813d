#include "AlertCenter.h"

#include "AlertMessage.h"

#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrCore/Scheduling/OverdueAlerts.h>
#include <TimeAndText/ShortenedText.h>

#include <algorithm>
#include <set>
#include <utility>

namespace hbr {

namespace {

/// Messages at a time, and cards a minute where no notifications are shown; what is due besides comes
/// together as one.
constexpr std::size_t mostMessages = 20;
constexpr std::size_t mostCards = 3;
constexpr std::size_t mostTitles = 10;
constexpr std::size_t mostBytesOfTitle = 100;
constexpr double cardPeriod = 60;
constexpr const char* restTag = "rest";

}  // namespace

AlertCenter::AlertCenter(CoreServices& core, std::unique_ptr<platform::DesktopNotifications> notifications,
                         Actions actions)
    : core_(core),
      notifications_(std::move(notifications)),
      actions_(std::move(actions)),
      file_(core.environment()),
      timer_([this] { watch_->wake(); }),
      messageTimer_([this] { updateMessages(); }),
      watch_(std::make_shared<AlertWatch>(
          AlertWatch::World{.clock = core.environment()->clock,
                            .wakeAt = [this](std::optional<platform::Date> date) { timer_.set(date); },
                            .due = [this](const AlertInvocation& one) { present(one); },
                            .snoozeRemoved = [this](const AlertInvocation& one) { withdraw(*one.event); },
                            .handled =
                                [this](const auto& alerts) {
                                    file_.save(alerts);
                                    presentRest();
                                }})) {
    watch_->restoreHandled(file_.load());
    core_.manager().setDelegate(watch_);
}

AlertCenter::~AlertCenter() = default;

void AlertCenter::restoreHandled(std::vector<HandledAlert> handled) {
    watch_->restoreHandled(std::move(handled));
}

std::vector<HandledAlert> AlertCenter::handledAndAnswered() const {
    auto handled = watch_->handled();
    std::erase_if(handled, [this](const HandledAlert& one) {
        return std::ranges::any_of(shown_, [&](const auto& shown) {
            const Event& event = *shown.second.event;
            return event.id == one.eventId && event.startDate == one.start;
        });
    });
    return handled;
}

void AlertCenter::findOverdue() {
    if (isSearching_) {
        searchesAgain_ = true;
        return;
    }
    isSearching_ = true;
    std::vector<std::string> tags;
    for (const auto& [tag, shown] : shown_)
        tags.push_back(tag);
    findOverdueAlerts(core_, [this, tags, alive = std::weak_ptr(isAlive_)](const auto& overdue) {
        if (!alive.lock()) return;
        isSearching_ = false;
        refreshMessages(tags, overdue);
        watch_->didFindOverdue(overdue);
        if (std::exchange(searchesAgain_, false)) return findOverdue();
        actions_.didRefresh();
    });
}

void AlertCenter::refreshMessages(const std::vector<std::string>& tags,
                                  const std::vector<AlertInvocation>& overdue) {
    tidyRest();
    if (tags.empty()) return;
    std::map<std::string, EventRef> known;
    for (const EventRef& event : core_.manager().lists()->all())
        known.emplace(alertTag(*event), event);
    std::set<std::string> alerting;
    for (const AlertInvocation& one : overdue) {
        const auto tag = alerting.insert(alertTag(*one.event)).first;
        known.insert_or_assign(*tag, one.event);
    }

    const auto now = core_.environment()->now();
    for (const std::string& tag : tags) {
        const auto shown = shown_.find(tag);
        if (shown == shown_.end()) continue;
        const auto found = known.find(tag);
        if (found != known.end()) shown->second.event = found->second;
        const Event& event = *shown->second.event;
        // Reminders that were due are in no list. One that was moved alerts again at its time.
        const bool isGone = found == known.end() && !isAnyReminder(event);
        const bool isSilenced = event.startDate > now && !alerting.contains(tag);
        if (isGone || isSilenced || isOver(event, now)) withdraw(tag);
    }
    updateMessages();
}

void AlertCenter::didReload() {
    findOverdue();
}

void AlertCenter::clockChanged() {
    watch_->wake();
    updateMessages();
}

void AlertCenter::present(const AlertInvocation& invocation) {
    const Event& event = *invocation.event;
    core_.manager().didHandleAlertInvocation(invocation);
    const auto choices = actions_.choices();
    const auto now = core_.environment()->now();
    if (!choices.showsNotifications || isOver(event, now)) return;
    const std::string tag = alertTag(event);
    if (!shown_.contains(tag) && shown_.size() >= mostMessages) return addToRest(tag, invocation.event);
    Shown& shown = shown_.insert_or_assign(tag, Shown{invocation.event, isUrgent(event, choices.urgent, now)})
                       .first->second;
    makeMessage(shown);
    notifications_->show(tag, shown.message,
                         [this, tag](const std::string& key, const std::optional<std::string>& token) {
                             if (token) actions_.useActivationToken(*token);
                             chosen(tag, key);
                         });
    wakeForChange(shown.changesAt);
}

bool AlertCenter::makeMessage(Shown& shown) const {
    platform::ChangeMoments changes;
    const platform::ClockReading clock(core_.environment()->now(), &changes);
    auto message = alertMessage(core_, *shown.event, clock);
    message.isUrgent = shown.isUrgent;
    shown.snooze = offeredSnooze(core_.settings(), *shown.event, clock.now());
    shown.changesAt = changes.earliest();
    if (message == shown.message) return false;
    shown.message = std::move(message);
    return true;
}

void AlertCenter::chosen(const std::string& tag, const std::string& key) {
    const auto found = shown_.find(tag);
    if (found == shown_.end()) return;
    const Shown answered = found->second;
    const Event& event = *answered.event;
    withdraw(tag);
    if (key == alertAction::join) return actions_.event.join(event);
    if (key == alertAction::snooze && answered.snooze) return actions_.event.snooze(event, *answered.snooze);
    if (key == alertAction::untilEvent) return actions_.event.snoozeUntilEvent(event);
    actions_.preview(event);
}

void AlertCenter::withdraw(const Event& event) {
    withdraw(alertTag(event));
}

void AlertCenter::withdraw(std::string tag) {
    shown_.erase(tag);
    notifications_->withdraw(tag);
}

void AlertCenter::addToRest(const std::string& tag, EventRef event) {
    rest_.insert_or_assign(tag, std::move(event));
    isRestShown_ = false;
}

void AlertCenter::presentRest() {
    if (std::exchange(isRestShown_, true)) return;
    platform::DesktopNotifications::Notification message;
    message.summary = actions_.titleOfRest(rest_.size());
    message.body = textOfRest();
    notifications_->show(restTag, std::move(message), {});
}

std::string AlertCenter::textOfRest() const {
    std::string text;
    std::size_t count = 0;
    for (const auto& [tag, event] : rest_) {
        if (count++ == mostTitles) return text + "\n…";
        text += (text.empty() ? "" : "\n") +
                platform::shortened(titleOrUntitled(*event, *core_.environment()), mostBytesOfTitle);
    }
    return text;
}

void AlertCenter::withdrawAll() {
    shown_.clear();
    rest_.clear();
    notifications_->withdrawAll();
}

void AlertCenter::presentOtherwise(const std::string& tag) {
    const auto now = core_.environment()->now();
    std::erase_if(cards_, [&](platform::Date shown) { return now.timeIntervalSince(shown) > cardPeriod; });
    const auto missed = shown_.extract(tag);
    if (missed && cards_.size() < mostCards) {
        cards_.push_back(now);
        return actions_.presentCard(*missed.mapped().event);
    }
    if (missed) rest_.insert_or_assign(tag, missed.mapped().event);
    if (!rest_.empty()) actions_.presentMessage(actions_.titleOfRest(rest_.size()), textOfRest());
}

void AlertCenter::tidyRest() {
    if (rest_.empty()) return;
    const auto now = core_.environment()->now();
    std::erase_if(rest_, [&](const auto& one) { return isOver(*one.second, now); });
    if (rest_.empty()) notifications_->withdraw(restTag);
}

void AlertCenter::updateMessages() {
    nextChange_.reset();
    messageTimer_.set(std::nullopt);
    for (auto& [tag, shown] : shown_) {
        if (makeMessage(shown)) notifications_->update(tag, shown.message);
        wakeForChange(shown.changesAt);
    }
}

void AlertCenter::wakeForChange(std::optional<platform::Date> change) {
    if (!change || (nextChange_ && *nextChange_ <= *change)) return;
    nextChange_ = change;
    messageTimer_.set(change);
}

}  // namespace hbr
