#pragma once

#include <HbrCore/Scheduling/CalendarEventManager.h>
#include <Values/Atomic.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

#include "AlertRegister.h"
#include "EventConversions.h"
#include "ExclusionVerdicts.h"
#include "PublishedLists.h"
#include "ReloadSettingsReader.h"
#include "ReloadSharing.h"

namespace hbr {

/// What a reload reads and fills. Work under way shares it, so it may outlive the manager.
struct ReloadContext {
    explicit ReloadContext(CalendarEventManager::Collaborators collaborators);

    CalendarEventManager::Collaborators services;
    ReloadSettingsReader settings;
    /// Counts the reloads in the order of their starts, which is the order of what they know.
    std::atomic<std::uint64_t> started = 0;
    /// Counts what changed beside settings and calendars.
    std::atomic<std::uint64_t> changes = 0;
    ReloadSharing sharing;
    PublishedLists lists;
    AlertRegister alerts;
    /// Main queue only, as what follows.
    EventConversions conversions;
    ExclusionVerdicts exclusions;
    platform::Atomic<std::weak_ptr<CalendarEventManagerDelegate>> delegate;
};

/// How a reload is requested.
enum class ReloadKind {
    /// A new one, announced at its end.
    announced,
    /// Announced; one that was announced and knows everything will do.
    announcedIfNeeded,
    /// Not announced; any that knows everything will do.
    quiet,
};

/// Queries the events on the calling thread and goes on asynchronously on the main queue. Several may be
/// under way, and the one that writes last wins; one whose lists thereby replaced those of another that was
/// started later is followed by one more, so that what is older never stays.
void startReload(std::shared_ptr<ReloadContext> context, ReloadKind kind,
                 std::function<void()> completion = {});
/// Not announced, with these settings in place of the stored ones.
void startReload(std::shared_ptr<ReloadContext> context, std::shared_ptr<const ReloadSettings> settings,
                 std::function<void()> completion);

}  // namespace hbr
