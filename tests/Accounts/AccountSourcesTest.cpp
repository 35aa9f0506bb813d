#include <Accounts/AccountSources.h>

#include <CalendarStore/EKEventStore.h>
#include <gmock/gmock.h>
#include <support/TestEnvironment.h>
#include <support/Threads.h>

namespace {

using namespace platform;

constexpr const char* calendar =
    "BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:u\nDTSTART:20260304T090000Z\nEND:VEVENT\nEND:VCALENDAR\n";

TEST(AccountSources, AStoreFollowsTheFile) {
    test::TestEnvironment environment;
    NotificationCenter center;
    EKEventStore store(environment, center, std::make_shared<AccountSources>(environment));
    EXPECT_EQ(store.authorizationStatus(EKEntityType::event), EKAuthorizationStatus::notDetermined);
    const auto add = [&](const char* name, std::filesystem::path location) {
        AccountsFile(environment).update([&](auto& accounts) {
            accounts.push_back({.name = name, .location = location});
        });
    };
    add("gone", environment.home / "gone");
    bool answer = true;
    store.requestFullAccessToEvents([&](bool granted, const std::exception_ptr&) { answer = granted; });
    EXPECT_FALSE(answer);
    EXPECT_EQ(store.authorizationStatus(EKEntityType::event), EKAuthorizationStatus::denied);
    EXPECT_EQ(store.report().at(0).problem, "there is no such file or folder");
    add("there", environment.home.write("a.ics", calendar));
    store.requestFullAccessToReminders([&](bool granted, const std::exception_ptr&) { answer = granted; });
    EXPECT_TRUE(answer);
    EXPECT_EQ(store.report().at(1).collections.at(0).eventCount, 1u);

    store.startWatching();
    add("later", environment.home.write("b.ics", calendar));
    EXPECT_TRUE(test::eventually([&] { return store.report().size() == 3; })) << "without being asked";
}

}  // namespace
