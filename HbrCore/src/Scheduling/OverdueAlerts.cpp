#include <HbrCore/Scheduling/OverdueAlerts.h>

#include <HbrCore/Events/EventTiming.h>
#include <HbrCore/Events/FilterRuleMatcher.h>
#include <HbrCore/Scheduling/AlertSchedule.h>
#include <HbrCore/Scheduling/ReloadWindow.h>
#include <HbrUtils/CalendarItemReaders.h>
#include <HbrUtils/TimeConstants.h>
#include <System/MainQueue.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace hbr {

namespace {

/// Before any alert.
constexpr platform::Date always{std::numeric_limits<double>::lowest()};

/// The moment and the settings by which alerts are found overdue, read once.
class Search {
  public:
    explicit Search(const CoreServices& core)
        : core_(core),
          calendar_(core.environment()->calendar),
          now_(core.environment()->now()),
          end_(ReloadWindow::of(calendar_, now_, core.settings().upcomingEventsDaysFilter()).end),
          settings_(AlertSettings::of(core.settings())),
          eventSettings_(core.eventSettings().customSettings()),
          rules_(core.settings().excludeRules()),
          schedule_(settings_, eventSettings_, core.parser(), calendar_, always) {}

    void findEvents() {
        const double longest = longestLead();
        // An event may have any travel time.
        const platform::Date last =
            settings_.includeTravelTime ? end_ : std::min(end_, now_.addingTimeInterval(longest));
        auto events = core_.aggregatedEventStore().events(now_, last);
        // Most are far ahead; what is left is worth looking for its call and its rules.
        std::erase_if(events, [&](const platform::EKEventRef& event) {
            const double travel = settings_.includeTravelTime ? travelTime(*event) : 0;
            return event->startDate.addingTimeInterval(-longest - travel) >= now_ ||
                   event->startDate.addingTimeInterval(DAY) < now_;
        });
        schedule_.append(filteredApplyingRules(events, rules_, true, calendar_), alerts_);
        keepOverdue(0, [this](const Event& event) {
            return alertOffset(static_cast<double>(settings_.timeOffsetSeconds),
                               EventSettingsStore::find(eventSettings_, event.id));
        });
    }

    void findOwnReminders() {
        for (const Reminder& reminder : core_.reminders().reminders(now_.addingTimeInterval(-DAY), end_)) {
            const std::size_t known = alerts_.size();
            schedule_.append(std::vector{reminder}, alerts_);
            keepOverdue(known,
                        [&](const Event&) { return static_cast<double>(reminder.timeOffsetSeconds()); });
        }
    }

    void findTasks(const std::vector<platform::EKReminderRef>& tasks) {
        const std::size_t known = alerts_.size();
        schedule_.append(filteredApplyingRules(tasks, rules_, true, calendar_), alerts_);
        keepOverdue(known, [this](const Event& event) {
            return alertOffset(static_cast<double>(settings_.timeOffsetSeconds),
                               EventSettingsStore::find(eventSettings_, event.id));
        });
    }

    const std::vector<AlertInvocation>& found() const { return alerts_; }

    platform::Date firstDueOfTasks() const { return now_.addingTimeInterval(-DAY); }
    platform::Date end() const { return end_; }

  private:
    double longestLead() const {
        auto longest = static_cast<double>(settings_.timeOffsetSeconds);
        if (!eventSettings_) return longest;
        for (const auto& [id, one] : *eventSettings_) {
            if (one.usesCustomTimeOffset)
                longest = std::max(longest, static_cast<double>(one.timeOffsetSeconds));
        }
        return longest;
    }

    /// Of the alerts from `first` on. `leadOf` is without the travel time, which brings an alert forward but
    /// says nothing about how long after the start it is of use.
    template <class LeadOf>
    void keepOverdue(std::size_t first, const LeadOf& leadOf) {
        const auto isLeftOut = [&](const AlertInvocation& alert) {
            const double late = now_.timeIntervalSince(alert.event->startDate);
            return alert.date > now_ || late > lateAlertPeriod(leadOf(*alert.event));
        };
        const auto begin = alerts_.begin() + static_cast<std::ptrdiff_t>(first);
        alerts_.erase(std::remove_if(begin, alerts_.end(), isLeftOut), alerts_.end());
    }

    const CoreServices& core_;
    const platform::Calendar& calendar_;
    const platform::Date now_;
    const platform::Date end_;
    const AlertSettings settings_;
    const std::optional<EventSettingsStore::Settings> eventSettings_;
    const std::vector<FilterRule> rules_;
    const AlertSchedule schedule_;
    std::vector<AlertInvocation> alerts_;
};

}  // namespace

double lateAlertPeriod(double lead) {
    return std::clamp(lead, MINUTE, DAY);
}

void findOverdueAlerts(const CoreServices& core,
                       std::function<void(const std::vector<AlertInvocation>&)> found) {
    if (core.settings().debugScreenshotMode()) {
        return platform::MainQueue::shared().async([found = std::move(found)] { found({}); });
    }
    auto search = std::make_shared<Search>(core);
    search->findEvents();
    search->findOwnReminders();
    const platform::Date first = search->firstDueOfTasks();
    const platform::Date end = search->end();
    core.aggregatedEventStore().reminders(
        first, end,
        [search = std::move(search),
         found = std::move(found)](std::vector<platform::EKReminderRef> tasks) mutable {
            platform::MainQueue::shared().async(
                [search = std::move(search), found = std::move(found), tasks = std::move(tasks)] {
                    search->findTasks(tasks);
                    found(search->found());
                });
        });
}

}  // namespace hbr
