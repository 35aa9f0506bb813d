#include <HbrCore/Events/EventTiming.h>
#include <HbrCore/Scheduling/ListChanges.h>
#include <HeedbannerWidgetExtension/TimelineProviders.h>
#include <HeedbannerWidgetExtension/Views/EventCountdownView.h>
#include <HeedbannerWidgetExtension/Views/EventListViews.h>
#include <System/MainQueue.h>
#include <System/WakeSchedule.h>
#include <Values/JsonText.h>
#include <Views/Painters.h>
#include <WidgetHost/LiveDrawing.h>
#include <WidgetHost/WidgetScheduler.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <sstream>

#include "Drawing.h"

using namespace hbr;
using namespace platform;

namespace {

/// A desktop with the three widgets, whose clock only the test moves: the scheduler plays the timelines, and
/// what each window shows is kept true as on a real desktop.
class Desktop {
  public:
    Desktop(test::Drawing& drawing, std::vector<Event> events)
        : drawing_(drawing), events_(std::move(events)), inputs_(drawing.inputs()) {
        scheduler_ = WidgetScheduler::make(
            widgets(),
            {.clock = drawing.world->clock,
             .wakeAt = [this](std::optional<Date> moment) { schedulerAlarm_->set(moment); },
             .show = [this](const std::string& kind,
                            const WidgetEntry& entry) { window(kind).draw(entry.view, context()); }});
        scheduler_->setShownKinds({"countdown", "upcoming", "current"});
        awaitChangeOfLists();
        reloadAtMinute();
    }

    /// Lets everything happen that is due up to `moment`.
    void runUntil(Date moment) {
        while (wakeDate_ && *wakeDate_ <= moment) {
            if (wakeDate_->timeIntervalSince(lastWake_) > 0.01) ++wakes;
            lastWake_ = *wakeDate_;
            drawing_.world.setNow(*wakeDate_);
            wakes_->wake();
            if (isWatched) paint();
        }
        drawing_.world.setNow(moment);
    }
    void paint() {
        for (auto& [kind, window] : windows_)
            window->wasSeen();
    }

    std::string shown(const std::string& kind) const { return readable(trees_.at(kind)); }

    /// As somebody sees it who starts the program right now.
    std::string fresh(const std::string& kind) {
        std::string text;
        for (const StaticConfiguration& widget : widgets()) {
            if (widget.kind() != kind) continue;
            widget.getTimeline({}, [&](const WidgetTimeline& timeline) {
                const WidgetEntry entry =
                    timeline.entries.empty() ? widget.placeholder({}) : timeline.entries.front();
                ViewContext now = context();
                now.now = drawing_.world->now();
                text = readable(layOutWidget(entry.view(now), now));
            });
        }
        return text;
    }

    int wakes = 0;
    /// Somebody looks at the screen.
    bool isWatched = true;

  private:
    ViewContext context() const { return drawing_.context(WidgetFamily::systemMedium); }

    /// All that is drawn and said, but for rings, which move on once a minute.
    static std::string readable(const LaidOutTree& tree) {
        const auto withoutRings = [](auto& self, LaidOutNode& node) -> void {
            node.fraction = 0;
            for (LaidOutNode& child : node.children)
                self(self, child);
        };
        LaidOutTree copy = tree;
        withoutRings(withoutRings, copy.root);
        std::string text = writeJson(treeJson(copy), 1);
        for (const AccessibleElement& element : copy.accessibleElements())
            text += "\n" + element.label;
        return text;
    }

    std::vector<StaticConfiguration> widgets() {
        const EventSource source{.environment = drawing_.world,
                                 .upcomingEvents = [this] { return shared(upcoming()); },
                                 .currentEvents = [this] { return shared(current()); },
                                 .reload = [](const std::function<void()>& completion) { completion(); }};
        const auto drawn = [this](const auto& view, const ViewContext& at) { return view.body(at); };
        const std::vector families = {WidgetFamily::systemMedium};
        return {StaticConfiguration("countdown", std::make_shared<const NextEventProvider>(source),
                                    [=, this](const NextEventEntry& entry, const ViewContext& at) {
                                        return drawn(NextEventCountdownWidgetView{entry, inputs_}, at);
                                    })
                    .supportedFamilies(families),
                StaticConfiguration("upcoming", std::make_shared<const UpcomingEvetsProvider>(source),
                                    [=, this](const UpcomingEventsEntry& entry, const ViewContext& at) {
                                        return drawn(UpcomingEventsWidgetView{entry, inputs_}, at);
                                    })
                    .supportedFamilies(families),
                StaticConfiguration("current", std::make_shared<const CurrentEvetsProvider>(source),
                                    [=, this](const CurrentEventsEntry& entry, const ViewContext& at) {
                                        return drawn(CurrentEventsWidgetView{entry, inputs_}, at);
                                    })
                    .supportedFamilies(families)};
    }

    static EventRefs shared(const std::vector<Event>& events) {
        EventRefs shared;
        for (const Event& event : events)
            shared.push_back(std::make_shared<const Event>(event));
        return shared;
    }
    template <class Belongs>
    std::vector<Event> those(Belongs belongs) const {
        std::vector<Event> found;
        std::ranges::copy_if(events_, std::back_inserter(found), belongs);
        return found;
    }
    std::vector<Event> upcoming() const {
        return those([now = drawing_.world->now()](const Event& event) { return isInFuture(event, now); });
    }
    std::vector<Event> current() const {
        return those(
            [now = drawing_.world->now()](const Event& event) { return isCurrentEvent(event, now); });
    }

    /// As the manager does at whole minutes and the program for what changes in between.
    void reload() {
        for (const char* kind : {"countdown", "upcoming", "current"})
            scheduler_->reloadTimelines(kind);
        bool isDone = false;
        MainQueue::shared().async([&] { isDone = true; });
        MainQueue::shared().runUntil([&] { return isDone; });
        awaitChangeOfLists();
    }
    void awaitChangeOfLists() {
        listsAlarm_->set(
            nextChangeWithinAMinute(shared(upcoming()), shared(current()), drawing_.world->now()));
    }
    void reloadAtMinute() {
        const double seconds = drawing_.world->now().timeIntervalSinceReferenceDate();
        constexpr double lateness = 0.001;
        minuteAlarm_->set(Date((std::floor(seconds / 60) + 1) * 60 + lateness));
    }

    LiveDrawing& window(const std::string& kind) {
        auto& window = windows_[kind];
        if (!window) {
            window =
                std::make_unique<LiveDrawing>(wakes_, [this, kind](LaidOutTree tree, LiveDrawing::Reason) {
                    trees_[kind] = std::move(tree);
                    return true;
                });
        }
        return *window;
    }

    test::Drawing& drawing_;
    std::vector<Event> events_;
    const EventViewInputs inputs_;
    std::optional<Date> wakeDate_;
    Date lastWake_;
    std::shared_ptr<WakeSchedule> wakes_ = std::make_shared<WakeSchedule>(
        WakeSchedule::World{.clock = drawing_.world->clock,
                            .wakeAt = [this](std::optional<Date> moment) { wakeDate_ = moment; }});
    std::shared_ptr<WidgetScheduler> scheduler_;
    std::unique_ptr<WakeSchedule::Alarm> schedulerAlarm_ = wakes_->add([this] { scheduler_->wake(); });
    std::unique_ptr<WakeSchedule::Alarm> listsAlarm_ = wakes_->add([this] { reload(); });
    std::unique_ptr<WakeSchedule::Alarm> minuteAlarm_ = wakes_->add([this] {
        reload();
        reloadAtMinute();
    });
    std::map<std::string, LaidOutTree> trees_;
    std::map<std::string, std::unique_ptr<LiveDrawing>> windows_;
};

/// Events around `begin`, at whole minutes and at odd seconds, with and without a call and a lead of their
/// own.
std::vector<Event> someEvents(test::Drawing& drawing, Date begin, std::mt19937& random) {
    const auto oneOf = [&](std::initializer_list<double> values) {
        return *(values.begin() + static_cast<std::ptrdiff_t>(random() % values.size()));
    };
    std::vector<Event> events;
    // Few: each of them may hide that another one is drawn too late.
    for (int i = static_cast<int>(random() % 3); i >= 0; --i) {
        Event event = drawing.event(std::to_string(i), 0, 0);
        event.startDate = begin.addingTimeInterval(oneOf({-3600, -61, 0, 17, 60, 75, 120, 133, 3660, 90000}));
        event.endDate = event.startDate.addingTimeInterval(oneOf({0, 60, 77, 1800, 3700, 86400}));
        if (random() % 4) event.videoConferenceLinks = {test::callLink()};
        if (random() % 3 == 0)
            drawing.settings.eventSettings[event.id] = {
                .usesCustomTimeOffset = true, .timeOffsetSeconds = static_cast<int>(oneOf({0, 45, 90}))};
        events.push_back(std::move(event));
    }
    std::ranges::stable_sort(events, {}, &Event::startDate);
    return events;
}

std::string firstDifference(const std::string& shown, const std::string& fresh) {
    std::istringstream shownLines(shown), freshLines(fresh);
    std::string a, b;
    do {
        if (!std::getline(shownLines, a)) a.clear();
        if (!std::getline(freshLines, b)) b.clear();
    } while (a == b && (shownLines || freshLines));
    return a == b ? "" : "shown:" + a + ", fresh:" + b;
}

TEST(TruthOfDrawings, AtEverySecondTheWindowsShowWhatAFreshDrawingShows) {
    struct Case {
        const char* zone;
        const char* begin;
    };
    // In the middle of a day, over midnight, and where the clock changes.
    const std::vector<Case> cases = {{"Europe/Berlin", "2026-03-04T09:00:00Z"},
                                     {"Asia/Kathmandu", "2026-03-04T18:13:43Z"},
                                     {"America/New_York", "2026-03-08T06:58:20Z"},
                                     {"Australia/Lord_Howe", "2026-04-04T14:59:05Z"},
                                     {"Europe/Berlin", "2026-03-28T22:58:59Z"}};
    std::mt19937 random(7);
    for (std::size_t world = 0; world < 4 * cases.size(); ++world) {
        const Case& c = cases[world % cases.size()];
        test::Drawing drawing("en_GB", false, c.zone);
        const Date begin = test::at(c.begin);
        drawing.world.setNow(begin);
        drawing.settings.timeOffset = std::array{0.0, 60.0, 75.0, 300.0}[random() % 4];
        Desktop desktop(drawing, someEvents(drawing, begin.addingTimeInterval(30), random));
        for (int second = 0; second < 90 && !testing::Test::HasFailure(); ++second) {
            // Now and then nobody looks for a while.
            desktop.isWatched = second % 50 < 40;
            desktop.runUntil(begin.addingTimeInterval(second + 0.01));
            if (!desktop.isWatched) continue;
            desktop.paint();
            for (const char* kind : {"countdown", "upcoming", "current"})
                EXPECT_EQ(firstDifference(desktop.shown(kind), desktop.fresh(kind)), "")
                    << c.zone << " " << second << " " << kind;
        }
    }
}

TEST(TruthOfDrawings, NothingWakesMoreThanOnceAMinuteUnlessSecondsAreCountedAndSeen) {
    test::Drawing drawing;
    const Date begin = drawing.world->now();
    std::vector<Event> events = {drawing.event("under way", -10, 50), drawing.event("next", 30, 60)};
    events[1].videoConferenceLinks = {test::callLink()};
    drawing.world.advance(0.5);
    Desktop desktop(drawing, events);
    desktop.runUntil(begin.addingTimeInterval(20 * 60 + 1));
    EXPECT_EQ(desktop.wakes, 20);
    desktop.runUntil(begin.addingTimeInterval(29 * 60));
    desktop.wakes = 0;
    desktop.runUntil(begin.addingTimeInterval(29 * 60 + 30));
    EXPECT_NEAR(desktop.wakes, 30, 1) << "the last minute counts seconds";
    desktop.isWatched = false;
    desktop.wakes = 0;
    desktop.runUntil(begin.addingTimeInterval(29 * 60 + 50));
    EXPECT_LE(desktop.wakes, 1) << "but nobody sees them";
}

}  // namespace
