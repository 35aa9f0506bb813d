#pragma once

#include <Foundation/Atomic.h>
#include <HbrCore/Scheduling/CalendarEventManager.h>

#include <functional>
#include <memory>
#include <utility>

#include "AlertRegister.h"
#include "EventLists.h"

namespace hbr {

/// What a reload reads and fills. Work under way shares it, so it may outlive the manager.
struct ReloadContext {
    explicit ReloadContext(CalendarEventManager::Collaborators collaborators)
        : services(std::move(collaborators)) {}

    CalendarEventManager::Collaborators services;
    EventLists lists;
    AlertRegister alerts;
    platform::Atomic<std::weak_ptr<CalendarEventManagerDelegate>> delegate;
};

/// Queries the events on the calling thread and goes on asynchronously on the main queue. Several may be
/// under way; the later one to write a list wins.
void startReload(std::shared_ptr<ReloadContext> context, bool shouldPostNotification,
                 std::function<void()> completion);

}  // namespace hbr
