#pragma once

#include <Foundation/Atomic.h>
#include <HbrCore/Scheduling/CalendarEventManager.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "AlertRegister.h"
#include "EventConversions.h"
#include "EventLists.h"

namespace hbr {

/// What a reload reads and fills. Work under way shares it, so it may outlive the manager.
struct ReloadContext {
    explicit ReloadContext(CalendarEventManager::Collaborators collaborators)
        : services(std::move(collaborators)), conversions(*services.parser) {}

    CalendarEventManager::Collaborators services;
    /// Counts the reloads in the order of their starts, which is the order of what they know.
    std::atomic<std::uint64_t> started = 0;
    PublishedLists lists;
    AlertRegister alerts;
    /// Main queue only.
    EventConversions conversions;
    platform::Atomic<std::weak_ptr<CalendarEventManagerDelegate>> delegate;
};

/// Queries the events on the calling thread and goes on asynchronously on the main queue. Several may be
/// under way, and the one that writes last wins; one whose lists thereby replaced those of another that was
/// started later is followed by one more, so that what is older never stays.
void startReload(std::shared_ptr<ReloadContext> context, bool shouldPostNotification,
                 std::function<void()> completion);

}  // namespace hbr
