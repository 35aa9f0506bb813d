#include "Settings/WatchedTasks.h"

#include <System/MainQueue.h>

namespace hbr {

std::vector<platform::EKReminderRef> watchedTasks(CommandContext& context, platform::Date from,
                                                  platform::Date to) {
    struct Answer {
        bool isThere = false;
        std::vector<platform::EKReminderRef> tasks;
    };
    // Shared with the completion handler, which outlives this call after a timeout.
    const auto answer = std::make_shared<Answer>();
    context.core().aggregatedEventStore().reminders(from, to, [answer](auto tasks) {
        platform::MainQueue::shared().async([answer, tasks = std::move(tasks)]() mutable {
            answer->tasks = std::move(tasks);
            answer->isThere = true;
        });
    });
    constexpr double patience = 60;
    platform::MainQueue::shared().runUntil([&] { return answer->isThere; }, patience);
    return answer->tasks;
}

}  // namespace hbr
