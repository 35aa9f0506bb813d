#include <Foundation/MainQueue.h>
#include <HbrCore/CoreFixture.h>
#include <MxLogger/MxLogger.h>
#include <gmock/gmock.h>

namespace {

using namespace hbr;
using test::at;
using test::meeting;
using test::titles;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(AggregatedEventStore, DelegatedCalendarsCountOnceAccessWasAskedFor) {
    test::CoreFixture core;
    core.account("Boss", "delegated", true);
    core.write("calendars/own.ics", meeting("Both", "20260304T120000Z") + meeting("Own", "20260304T130000Z"));
    core.write("delegated/theirs.ics",
               meeting("Both", "20260304T120000Z") + meeting("Theirs", "20260304T140000Z"));
    auto& store = core.services().aggregatedEventStore();
    EXPECT_THAT(titles(core.reloaded().scheduledEvents()), ElementsAre("Both", "Own"));
    int granted = 0;
    const auto observation =
        core.services().center().observe(grantedPermissionNotification, [&] { ++granted; });
    store.requestCalendarAccess([](std::exception_ptr error) { EXPECT_FALSE(error); });
    EXPECT_THAT(titles(core.reloaded().scheduledEvents()), ElementsAre("Both", "Own", "Theirs"));
    EXPECT_EQ(granted, 1);
    const auto calendars = core.services().manager().fetchCalendars();
    ASSERT_EQ(calendars.size(), 2u);
    EXPECT_TRUE(calendars[1].isDelegate);
    EXPECT_EQ(
        core.services().manager().accountEmailForEvent(core.services().manager().scheduledEvents()[2].id),
        "me@example.org");
}

TEST(AggregatedEventStore, WithoutAccessTheRequestSaysSoAndListsAreEmpty) {
    test::TestEnvironment environment;
    CoreServices services(environment, {});
    bool isRefused = false;
    services.aggregatedEventStore().requestCalendarAccess([&](std::exception_ptr error) {
        try {
            std::rethrow_exception(error);
        } catch (const EventKitError& refusal) {
            isRefused = refusal.code() == EventKitError::Code::accessNotGranted;
        }
    });
    EXPECT_TRUE(isRefused);
    reloadAndWait(services);
    EXPECT_THAT(services.manager().allCachedEvents(), IsEmpty());
}

}  // namespace
