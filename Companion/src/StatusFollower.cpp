#include "StatusFollower.h"

#include <Foundation/MainQueue.h>
#include <Foundation/ReaderWatch.h>
#include <Foundation/TerminationRequest.h>
#include <HbrUtils/DateOperations.h>

#include <unistd.h>

namespace hbr {

namespace {

class StatusFollower {
  public:
    StatusFollower(CommandContext& context, const StatusOptions& options, std::optional<double> within)
        : core_(context.core()), out_(context.console().out()), options_(options), within_(within) {}

    void run() {
        // Before anything is read, so that no change and no end falls between.
        const auto end = [this] { hasEnded_ = true; };
        const platform::TerminationRequest termination(end);
        const platform::ReaderWatch reader(STDOUT_FILENO, end);
        const auto reloads = core_.center().observe(didReloadEventsNotification, [this] { show(); });
        const auto settings = observeSettings();
        // The manager's own timer leaves the first whole minute out.
        const platform::Environment& environment = *core_.environment();
        const platform::WallClockTimer firstMinute(
            removingSeconds(environment.now().addingTimeInterval(60), environment.calendar), 0,
            [this] { core_.manager().reloadEvents(true); });

        reloadAndWait(core_);
        show();
        platform::MainQueue::shared().runUntil([this] { return hasEnded_; });
    }

  private:
    std::vector<std::shared_ptr<platform::DefaultsDomain::Observation>> observeSettings() {
        std::vector<std::shared_ptr<platform::DefaultsDomain::Observation>> observations;
        const auto observe = [&](std::string_view key) {
            observations.push_back(
                core_.sharedDomain()->observe(key, [this] { core_.manager().reloadEvents(true); }));
        };
        for (const auto key : UserSettingsStore::keys)
            observe(key);
        observe(EventSettingsStore::storageKey);
        observe(CustomRemindersStore::storageKey);
        return observations;
    }

    void show() {
        std::string line = statusOutput(currentStatus(core_, within_), options_, core_);
        if (shown_ == line) return;
        out_ << line << std::endl;
        // A full disk or a reader that is gone: nothing that follows would be seen.
        if (!out_) hasEnded_ = true;
        shown_ = std::move(line);
    }

    CoreServices& core_;
    std::ostream& out_;
    const StatusOptions& options_;
    std::optional<double> within_;
    std::optional<std::string> shown_;
    bool hasEnded_ = false;
};

}  // namespace

void followStatus(CommandContext& context, const StatusOptions& options, std::optional<double> within) {
    StatusFollower(context, options, within).run();
}

}  // namespace hbr
