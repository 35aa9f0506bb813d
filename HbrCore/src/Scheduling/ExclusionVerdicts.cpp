#include "ExclusionVerdicts.h"

#include <utility>

namespace hbr {

void ExclusionVerdicts::setRules(const std::vector<FilterRule>& rules) {
    if (rules == rules_) return;
    rules_ = rules;
    matcher_.reset();
    if (!rules_.empty()) matcher_.emplace(rules_, calendar_);
    events_.clear();
    reminders_.clear();
}

template <class Record>
std::vector<std::shared_ptr<const Record>> ExclusionVerdicts::kept(
    std::vector<std::shared_ptr<const Record>> records, Verdicts<Record>& verdicts) const {
    if (!matcher_) return records;
    std::erase_if(records, [&](const auto& record) {
        std::optional<bool>& isHit = verdicts.of(record);
        if (!isHit) isHit = matcher_->matchesAny(*record);
        return *isHit;
    });
    return records;
}

std::vector<platform::EKEventRef> ExclusionVerdicts::withoutExcluded(
    std::vector<platform::EKEventRef> events) {
    return kept(std::move(events), events_);
}

std::vector<platform::EKReminderRef> ExclusionVerdicts::withoutExcluded(
    std::vector<platform::EKReminderRef> reminders) {
    return kept(std::move(reminders), reminders_);
}

void ExclusionVerdicts::forgetUnused() {
    events_.forgetUnused();
    reminders_.forgetUnused();
}

}  // namespace hbr
