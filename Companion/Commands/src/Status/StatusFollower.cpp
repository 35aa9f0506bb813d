#include "Status/StatusFollower.h"

#include "Status/ReaderWatch.h"

#include <HbrUtils/DateOperations.h>
#include <System/MainQueue.h>
#include <System/TerminationRequest.h>
#include <System/WakeSchedule.h>
#include <System/WallClockTimer.h>
#include <System/ZoneChange.h>
#include <TimeAndText/Text.h>
#include <Words/CompanionText.h>

#include <unistd.h>
#include <fstream>
#include <iterator>

namespace hbr {

namespace {

/// Runs the program again with the same arguments, because a process reads zone and language only once.
[[noreturn]] void restart(const platform::Environment& environment) {
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    const std::string line{std::istreambuf_iterator<char>(file), {}};
    auto arguments = platform::split(line, std::string_view("\0", 1));
    arguments.pop_back();
    std::vector<char*> pointers;
    for (auto& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    execv("/proc/self/exe", pointers.data());
    throw CommandFailure(ExitCode::failed, companionText(environment, "Status.notRestarted"));
}

class StatusFollower {
  public:
    StatusFollower(CommandContext& context, const StatusOptions& options, std::optional<double> within)
        : core_(context.core()), out_(context.console().out()), options_(options), within_(within) {}

    void run() {
        // Before anything is read, so that no change and no request to end is missed.
        const auto end = [this] { hasEnded_ = true; };
        const platform::TerminationRequest termination(end);
        const ReaderWatch reader(STDOUT_FILENO, end);
        const platform::ZoneChange zone(*core_.environment(), [this] { isOutdated_ = true; });
        const auto reloads = core_.center().observe(didReloadEventsNotification, [this] { show(); });
        const auto settings = reloadAfterSettingsChange(core_);
        // The manager's own timer skips the first whole minute.
        const platform::Environment& environment = *core_.environment();
        const platform::WallClockTimer firstMinute(
            removingSeconds(environment.now().addingTimeInterval(60), environment.calendar), 0,
            [this] { core_.manager().reloadEvents(true); });

        reloadAndWait(core_);
        wakes_ = platform::WakeSchedule::onMainQueue(environment.clock);
        change_ = wakes_->add([this] { core_.manager().reloadEvents(true); });
        show();
        platform::MainQueue::shared().runUntil([this] { return hasEnded_ || isOutdated_; });
        if (isOutdated_ && !hasEnded_) restart(environment);
    }

  private:
    void show() {
        const Status status = currentStatus(core_, within_);
        std::string line = statusOutput(status, options_, core_);
        awaitChange(status);
        if (shown_ == line) return;
        out_ << line << std::endl;
        // The disk is full or the reader is gone: no later line would be seen.
        if (!out_) hasEnded_ = true;
        shown_ = std::move(line);
    }

    /// For changes of the line within a minute; at whole minutes the manager reloads by itself.
    void awaitChange(const Status& status) {
        if (!change_) return;
        constexpr double belonging = 0.01;
        auto moment = status.changes->earliest();
        const platform::Calendar& calendar = core_.environment()->calendar;
        if (moment && moment->timeIntervalSince(removingSeconds(*moment, calendar)) < belonging)
            moment.reset();
        change_->set(moment);
    }

    CoreServices& core_;
    std::ostream& out_;
    const StatusOptions& options_;
    std::optional<double> within_;
    std::optional<std::string> shown_;
    std::shared_ptr<platform::WakeSchedule> wakes_;
    std::unique_ptr<platform::WakeSchedule::Alarm> change_;
    bool hasEnded_ = false;
    bool isOutdated_ = false;
};

}  // namespace

void followStatus(CommandContext& context, const StatusOptions& options, std::optional<double> within) {
    StatusFollower(context, options, within).run();
}

}  // namespace hbr
