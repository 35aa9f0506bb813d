#include "SettingsWatch.h"

#include <HbrCore/Stores/CustomRemindersStore.h>
#include <HbrCore/Stores/EventSettingsStore.h>
#include <HbrCore/Stores/HiddenOccurrencesStore.h>
#include <HbrCore/Stores/UserSettingsStore.h>
#include <System/MainQueue.h>

#include <utility>

namespace hbr {

struct SettingsWatch::State {
    std::function<void()> changed;
    bool isPending = false;
};

SettingsWatch::SettingsWatch(const DefaultsDomains& domains, std::function<void()> changed)
    : state_(std::make_shared<State>(State{std::move(changed)})) {
    const auto tell = [weak = std::weak_ptr(state_)] {
        const auto state = weak.lock();
        if (!state || std::exchange(state->isPending, true)) return;
        platform::MainQueue::shared().async([weak] {
            const auto waiting = weak.lock();
            if (!waiting) return;
            waiting->isPending = false;
            waiting->changed();
        });
    };
    for (const SettingFacts& setting : SettingsTable::facts)
        observations_.push_back(domains.shared->observe(setting.key, tell));
    for (const auto key : {EventSettingsStore::storageKey, HiddenOccurrencesStore::storageKey})
        observations_.push_back(domains.shared->observe(key, tell));
    observations_.push_back(domains.shared->observe(CustomRemindersStore::storageKey, tell));
}

SettingsWatch::~SettingsWatch() = default;

}  // namespace hbr
