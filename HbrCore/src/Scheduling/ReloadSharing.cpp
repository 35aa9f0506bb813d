#include "ReloadSharing.h"

#include <System/MainQueue.h>

#include <cmath>
#include <utility>

namespace hbr {

namespace {

bool isSameSecond(platform::Date a, platform::Date b) {
    return std::floor(a.timeIntervalSinceReferenceDate()) == std::floor(b.timeIntervalSinceReferenceDate());
}

void append(std::vector<ReloadSharing::Completion>& completions, ReloadSharing::Completion completion) {
    if (completion) completions.push_back(std::move(completion));
}

}  // namespace

bool ReloadSharing::answers(const Round& round, const ReloadInputs& inputs, platform::Date now,
                            Wanted wanted) const {
    if (wanted == Wanted::announcedReload && !round.isAnnounced) return false;
    // Lists that are still to be worked out will be those of a later moment, in the interval of their day.
    const bool isOfNow = round.moment ? isSameSecond(*round.moment, now) : now >= round.start;
    return isOfNow && calendar_.isSameDay(round.start, now) && round.inputs == inputs;
}

bool ReloadSharing::join(const ReloadInputs& inputs, platform::Date now, Wanted wanted,
                         Completion& completion) {
    std::lock_guard lock(mutex_);
    if (!newest_ || !answers(*newest_, inputs, now, wanted)) return false;
    if (!newest_->hasEnded) {
        append(newest_->completions, std::move(completion));
    } else if (completion) {
        platform::MainQueue::shared().async(std::move(completion));
    }
    return true;
}

ReloadSharing::RoundRef ReloadSharing::begin(ReloadInputs inputs, platform::Date now, bool isAnnounced,
                                             Completion completion) {
    auto round = beginApart(std::move(completion));
    round->inputs = std::move(inputs);
    round->start = now;
    round->isAnnounced = isAnnounced;
    std::lock_guard lock(mutex_);
    newest_ = round;
    return round;
}

ReloadSharing::RoundRef ReloadSharing::beginApart(Completion completion) {
    auto round = std::make_shared<Round>();
    append(round->completions, std::move(completion));
    forgetNewest();
    return round;
}

void ReloadSharing::setMoment(const RoundRef& round, platform::Date moment) {
    std::lock_guard lock(mutex_);
    round->moment = moment;
}

void ReloadSharing::forgetNewest() {
    std::lock_guard lock(mutex_);
    newest_.reset();
}

std::vector<ReloadSharing::Completion> ReloadSharing::end(const RoundRef& round) {
    std::lock_guard lock(mutex_);
    round->hasEnded = true;
    return std::exchange(round->completions, {});
}

}  // namespace hbr
