#include <HbrCore/Stores/CustomRemindersStore.h>
#include <gmock/gmock.h>

#include <support/TestEnvironment.h>
#include <support/TextEnvironment.h>
#include <cmath>

#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace hbr;
using test::at;

class CustomReminders : public testing::Test {
  protected:
    std::vector<std::string> ids() const {
        std::vector<std::string> list;
        for (const Reminder& reminder : store.reminders())
            list.push_back(reminder.id());
        return list;
    }
    static Reminder reminder(std::string id, std::string_view date) {
        return {std::move(id), at(date), std::nullopt, std::nullopt, 60};
    }

    test::TestEnvironment environment{"2026-04-10T10:00:00Z"};
    platform::NotificationCenter center;
    platform::DefaultsDomainRef domain = std::make_shared<platform::DefaultsDomain>(
        environment.home / "shared.plist", environment.diagnostics);
    CustomRemindersStore store{domain, center, environment};
};

TEST_F(CustomReminders, OrderAndAnnouncementsOfChanges) {
    int announced = 0;
    const auto observation = center.observe(remindersChangedNotification, [&] { ++announced; });
    store.addReminder(reminder("a", "2026-04-11T10:00:00Z"));
    store.addReminder(reminder("b", "2026-04-12T10:00:00Z"));
    store.addReminder(reminder("b", "2026-04-13T10:00:00Z"));
    EXPECT_EQ(store.reminder("b")->date(), at("2026-04-12T10:00:00Z"));
    store.updateReminder(reminder("a", "2026-04-14T10:00:00Z"));
    EXPECT_THAT(ids(), testing::ElementsAre("b", "b", "a"));
    store.removeReminder("b");
    store.removeReminder("nobody");
    EXPECT_THAT(ids(), testing::ElementsAre("a"));
    for (const double date : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        const Reminder never("c", platform::Date(date), "T", {}, 60);
        EXPECT_FALSE(store.addReminder(never) || store.updateReminder(never) ||
                     store.moveReminder("a", date));
    }
    EXPECT_THAT(ids(), testing::ElementsAre("a"));
    EXPECT_EQ(announced, 6);
}

TEST_F(CustomReminders, IntervalsIncludeTheirBoundsAndFutureMeansLater) {
    store.addReminder(reminder("now", "2026-04-10T10:00:00Z"));
    store.addReminder(reminder("later", "2026-04-10T10:00:01Z"));
    EXPECT_EQ(store.futureReminders().size(), 1u);
    EXPECT_EQ(store.reminders(at("2026-04-10T10:00:00Z"), at("2026-04-10T10:00:01Z")).size(), 2u);
    EXPECT_EQ(store.reminders(at("2026-04-10T10:00:02Z"), at("2026-04-10T11:00:00Z")).size(), 0u);
}

TEST_F(CustomReminders, ThePurgeKeepsThirtyCalendarDays) {
    // Thirty days back lies before the change to summer time: the wall clock counts.
    store.addReminder(reminder("kept", "2026-03-11T11:00:00Z"));
    store.addReminder(reminder("gone", "2026-03-11T10:59:59Z"));
    int announced = 0;
    const auto observation = center.observe(remindersChangedNotification, [&] { ++announced; });
    store.purgePastReminders();
    EXPECT_THAT(ids(), testing::ElementsAre("kept"));
    EXPECT_EQ(announced, 0);
}

TEST_F(CustomReminders, MovesOfSeveralProcessesAllCount) {
    store.addReminder(reminder("a", "2026-04-11T10:00:00Z"));
    store.addReminder(reminder("b", "2026-04-12T10:00:00Z"));
    const auto move = [&] {
        platform::NotificationCenter own;
        CustomRemindersStore mine(
            std::make_shared<platform::DefaultsDomain>(domain->file(), environment.diagnostics), own,
            environment);
        for (int i = 0; i < 20; ++i) {
            if (!mine.moveReminder("a", 60)) return false;
            mine.purgePastReminders();
        }
        return true;
    };
    const pid_t child = fork();
    if (child == 0) _exit(move() ? 0 : 1);
    EXPECT_TRUE(move());
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(store.reminder("a")->date(), at("2026-04-11T10:40:00Z"));
    EXPECT_THAT(ids(), testing::ElementsAre("b", "a"));
    int announced = 0;
    const auto observation = center.observe(remindersChangedNotification, [&] { ++announced; });
    EXPECT_TRUE(store.moveReminder("b", -60));
    EXPECT_FALSE(store.moveReminder("nobody", 60));
    EXPECT_EQ(announced, 1);
}

TEST_F(CustomReminders, ABlockThatCannotBeReadOutlivesThePurgeButNotAWrite) {
    const platform::PropertyValue damaged = platform::dataOf("damaged");
    domain->setValue(CustomRemindersStore::storageKey, damaged);
    store.purgePastReminders();
    EXPECT_EQ(domain->value(CustomRemindersStore::storageKey), damaged);
    EXPECT_TRUE(store.reminders().empty());
    store.addReminder(reminder("a", "2026-04-11T10:00:00Z"));
    EXPECT_THAT(ids(), testing::ElementsAre("a"));
}

TEST_F(CustomReminders, StoredForm) {
    const Reminder written("i", platform::Date(794223660.5), "T", std::nullopt, -5);
    const std::string text = platform::writeJson(JsonCoding<Reminder>::encode(written));
    EXPECT_EQ(text, R"({"id":"i","date":794223660.5,"title":"T","timeOffsetSeconds":-5})");
    const Reminder read = JsonCoding<Reminder>::decode(*platform::parseJson(text));
    EXPECT_EQ(read.date(), written.date());
    EXPECT_EQ(read.notes(), std::nullopt);
    const test::TextEnvironment texts("2026-03-04T09:00:00Z");
    EXPECT_EQ(test::shown(read.formattedDate(texts.formatters)), "March 3, 2026 at 10:41_AM");
    EXPECT_EQ(Reminder("i", written.date(), std::nullopt, {}, 0).localizedTitle(), "(untitled)");
    EXPECT_EQ(written.debugDescription(),
              "Reminder (i)\n    date: 2026-03-03 09:41:00 +0000\n    title: T\n    notes: \n    "
              "timeOffsetSeconds: -5");
    for (const char* bad :
         {R"({"id":"i","timeOffsetSeconds":1})", R"({"id":"i","date":1,"timeOffsetSeconds":1.5})",
          R"({"id":1,"date":1,"timeOffsetSeconds":1})"}) {
        EXPECT_THROW(JsonCoding<Reminder>::decode(*platform::parseJson(bad)), platform::DecodingError) << bad;
    }
}

}  // namespace
