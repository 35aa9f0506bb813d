#include <WidgetHost/WidgetScheduler.h>

#include <System/MainQueue.h>
#include <gmock/gmock.h>
#include <support/TestEnvironment.h>

#include <map>
#include <thread>

namespace {

using namespace platform;
using test::at;
using testing::ElementsAre;
using testing::IsEmpty;

struct NumberedEntry {
    Date date;
    std::string name;
};

JsonValue entryJson(const NumberedEntry& entry) {
    return entry.name;
}
std::string entryText(const NumberedEntry& entry, const Environment&) {
    return entry.name;
}

/// Answers when the test says so, or at once.
class PromptedProvider final : public TimelineProvider<NumberedEntry> {
  public:
    using Completion = std::function<void(Timeline<NumberedEntry>)>;
    using Answer = std::function<Timeline<NumberedEntry>()>;

    NumberedEntry placeholder(const TimelineProviderContext&) const override { return {{}, "nothing"}; }
    void getSnapshot(const TimelineProviderContext&, std::function<void(NumberedEntry)>) const override {}
    void getTimeline(const TimelineProviderContext&, Completion completion) const override {
        if (answer) return completion(answer());
        waiting.push_back(std::move(completion));
        ++asked;
    }

    Answer answer;
    mutable std::vector<Completion> waiting;
    mutable int asked = 0;
};

/// Drives the scheduler of two widgets, "a" and "b", by a clock that only the test moves.
class WidgetSchedulerTest : public testing::Test {
  protected:
    WidgetSchedulerTest() { scheduler->setShownKinds({"a", "b"}); }

    static StaticConfiguration widget(std::string kind, std::shared_ptr<PromptedProvider> provider) {
        return StaticConfiguration(std::move(kind), std::move(provider),
                                   [](const NumberedEntry&, const ViewContext&) { return View(); })
            .supportedFamilies({WidgetFamily::systemSmall});
    }

    static Timeline<NumberedEntry> timeline(std::vector<NumberedEntry> entries, const char* policy) {
        return {std::move(entries), TimelineReloadPolicy::after(at(policy))};
    }

    static void answer(PromptedProvider& provider, Timeline<NumberedEntry> timeline) {
        ASSERT_FALSE(provider.waiting.empty());
        auto completion = std::move(provider.waiting.back());
        provider.waiting.pop_back();
        completion(std::move(timeline));
    }

    static void runRequests() {
        bool isDone = false;
        MainQueue::shared().async([&] { isDone = true; });
        MainQueue::shared().runUntil([&] { return isDone; });
    }

    /// Lets the clock run to `moment`, waking the scheduler when it wished.
    void runUntil(const char* moment) {
        while (wakeDate && *wakeDate <= at(moment)) {
            environment.advance(wakeDate->timeIntervalSince(environment->now()));
            wakeDate.reset();
            ++wakes;
            scheduler->wake();
        }
        environment.setNow(moment);
    }

    std::vector<std::string> takeShown() { return std::exchange(shown, {}); }

    test::TestEnvironment environment{"2026-03-04T09:00:10Z"};
    std::optional<Date> wakeDate;
    int wakes = 0;
    std::vector<std::string> shown;
    std::shared_ptr<PromptedProvider> a = std::make_shared<PromptedProvider>();
    std::shared_ptr<PromptedProvider> b = std::make_shared<PromptedProvider>();
    std::shared_ptr<WidgetScheduler> scheduler = WidgetScheduler::make(
        {widget("a", a), widget("b", b)}, {.clock = environment->clock,
                                           .wakeAt = [this](std::optional<Date> date) { wakeDate = date; },
                                           .show =
                                               [this](const std::string& kind, const WidgetEntry& entry) {
                                                   shown.push_back(kind + " " + *entry.json().asString());
                                               }});
};

TEST_F(WidgetSchedulerTest, ShowsEachEntryFromItsDateAndAsksAgainAtThePolicyWithASecondOfSlack) {
    answer(*a, timeline({{at("2026-03-04T09:00:10Z"), "1"}, {at("2026-03-04T09:30:00Z"), "2"}},
                        "2026-03-04T09:40:00Z"));
    answer(*b, timeline({}, "2026-03-04T10:00:00Z"));
    EXPECT_THAT(takeShown(), ElementsAre("a 1", "b nothing"));

    runUntil("2026-03-04T09:29:59Z");
    EXPECT_EQ(wakes, 0);
    EXPECT_THAT(takeShown(), IsEmpty());
    runUntil("2026-03-04T09:30:00Z");
    EXPECT_THAT(takeShown(), ElementsAre("a 2"));
    runUntil("2026-03-04T09:40:00Z");
    EXPECT_EQ(a->asked, 1);
    runUntil("2026-03-04T09:40:01Z");
    EXPECT_EQ(a->asked, 2);
    EXPECT_EQ(b->asked, 1);
    EXPECT_EQ(wakes, 2);
}

TEST_F(WidgetSchedulerTest, ARequestBeforeThePolicyTakesItsPlace) {
    answer(*a, timeline({{at("2026-03-04T09:00:10Z"), "1"}}, "2026-03-04T09:01:00Z"));
    answer(*b, timeline({}, "2026-03-05T09:00:00Z"));
    runUntil("2026-03-04T09:01:00Z");
    scheduler->reloadTimelines("a");
    runRequests();
    answer(*a, timeline({{at("2026-03-04T09:01:00Z"), "2"}}, "2026-03-04T09:02:00Z"));
    runUntil("2026-03-04T09:02:00Z");
    EXPECT_EQ(a->asked, 2);
    EXPECT_EQ(wakes, 0) << "the policies never came to wake";
}

TEST_F(WidgetSchedulerTest, RequestsOfOneKindAreMerged) {
    answer(*b, timeline({}, "2026-03-05T09:00:00Z"));
    // While the first request is under way, also from another thread: one more afterwards.
    std::thread([&] {
        for (int i = 0; i < 5; ++i)
            scheduler->reloadTimelines("a");
    }).join();
    runRequests();
    scheduler->reloadTimelines("a");
    runRequests();
    EXPECT_EQ(a->asked, 1);
    answer(*a, timeline({{at("2026-03-04T09:00:10Z"), "1"}}, "2026-03-04T09:10:00Z"));
    EXPECT_EQ(a->asked, 2);
    answer(*a, timeline({{at("2026-03-04T09:00:10Z"), "2"}}, "2026-03-04T09:10:00Z"));
    EXPECT_EQ(a->asked, 2);
    EXPECT_EQ(b->asked, 1);
    EXPECT_THAT(takeShown(), ElementsAre("b nothing", "a 1", "a 2"));
}

TEST_F(WidgetSchedulerTest, AProviderThatDoesNotAnswerStopsNobodyAndIsAskedAgain) {
    answer(*b, timeline({{at("2026-03-04T09:00:10Z"), "1"}}, "2026-03-04T09:00:30Z"));
    runUntil("2026-03-04T09:00:59Z");
    EXPECT_EQ(b->asked, 2);
    EXPECT_EQ(a->asked, 1);
    runUntil("2026-03-04T09:01:00Z");
    EXPECT_EQ(a->asked, 2) << "a whole minute later";
    // The newest answer counts, and an older one that comes after it is dropped.
    answer(*a, timeline({{at("2026-03-04T09:01:00Z"), "second"}}, "2026-03-04T09:10:00Z"));
    answer(*a, timeline({{at("2026-03-04T09:00:10Z"), "first"}}, "2026-03-04T09:10:00Z"));
    EXPECT_THAT(takeShown(), ElementsAre("b 1", "a second"));
}

TEST_F(WidgetSchedulerTest, APolicyThatIsPastIsAskedForAtTheNextWholeMinute) {
    b->answer = [] { return timeline({}, "2026-03-04T08:00:00Z"); };
    answer(*b, timeline({}, "2026-03-04T08:00:00Z"));
    answer(*a, timeline({}, "2026-03-05T09:00:00Z"));
    runUntil("2026-03-04T09:05:30Z");
    EXPECT_EQ(wakes, 5);
}

TEST_F(WidgetSchedulerTest, AClockThatIsSetBackBringsTheEarlierEntryAndANewTimeline) {
    answer(*a, timeline({{at("2026-03-04T09:00:10Z"), "1"}, {at("2026-03-04T09:30:00Z"), "2"}},
                        "2026-03-04T09:40:00Z"));
    answer(*b, timeline({}, "2026-03-05T09:00:00Z"));
    runUntil("2026-03-04T09:35:00Z");
    takeShown();
    environment.setNow("2026-03-04T09:15:00Z");
    scheduler->clockChanged();
    EXPECT_THAT(takeShown(), ElementsAre("a 1"));
    EXPECT_EQ(a->asked, 2);
    EXPECT_EQ(b->asked, 2);
}

TEST_F(WidgetSchedulerTest, WhatIsNotShownIsNotAskedForUntilItIsShownAgain) {
    answer(*a, timeline({{at("2026-03-04T09:00:10Z"), "1"}}, "2026-03-04T09:01:00Z"));
    answer(*b, timeline({}, "2026-03-05T09:00:00Z"));
    scheduler->setShownKinds({"b"});
    scheduler->reloadAllTimelines();
    runRequests();
    answer(*b, timeline({}, "2026-03-05T09:00:00Z"));
    runUntil("2026-03-04T10:00:00Z");
    EXPECT_EQ(wakes, 0);
    EXPECT_EQ(a->asked, 1);
    EXPECT_EQ(b->asked, 2);
    scheduler->setShownKinds({"a", "b"});
    EXPECT_EQ(a->asked, 2);
}

}  // namespace
