#include <HbrCore/Stores/EventSettingsStore.h>
#include <gmock/gmock.h>
#include <support/TestEnvironment.h>

namespace {

using namespace hbr;

class EventSettingsStoreTest : public testing::Test {
  protected:
    platform::PropertyDictionary stored() const {
        return *domain->value(EventSettingsStore::storageKey)->asDictionary();
    }

    test::TestEnvironment environment;
    platform::NotificationCenter center;
    platform::DefaultsDomainRef domain = std::make_shared<platform::DefaultsDomain>(
        environment.home / "shared.plist", environment.diagnostics);
    EventSettingsStore store{domain, center};
    const EventSettings excluded{.isExcluded = true};
};

TEST_F(EventSettingsStoreTest, DamagedEntriesOfOtherEventsStayWhereTheyAre) {
    store.storeCustomSettings(excluded, "good");
    auto entries = stored();
    entries.set("bad", platform::dataOf("no json"));
    domain->setValue(EventSettingsStore::storageKey, entries);
    EXPECT_THAT(store.customSettings().value(), testing::ElementsAre(testing::Pair("good", excluded)));
    EXPECT_FALSE(store.customSettings("bad"));

    entries.set("text", "a text");
    domain->setValue(EventSettingsStore::storageKey, entries);
    EXPECT_FALSE(store.customSettings());
    EXPECT_FALSE(store.customSettings("good"));
    store.storeCustomSettings(excluded, "new");
    EXPECT_EQ(stored().size(), 4u);
}

TEST_F(EventSettingsStoreTest, EveryChangeButTheRemovalOfAllIsAnnounced) {
    int announced = 0;
    const auto observation =
        center.observe(EventSettingsStore::customEventSettingsChangedNotification, [&] { ++announced; });
    EXPECT_FALSE(store.customSettings());
    store.deleteCustomSettings("nobody");
    EXPECT_TRUE(store.customSettings()->empty());
    store.storeCustomSettings(excluded, "e");
    store.deleteAllCustomEventSettings();
    EXPECT_TRUE(store.customSettings()->empty());
    EXPECT_EQ(announced, 2);
}

TEST_F(EventSettingsStoreTest, StoredForm) {
    EventSettings settings{.type = Event::EventType::appleReminder, .timeOffsetSeconds = 600};
    EXPECT_EQ(
        platform::writeJson(JsonCoding<EventSettings>::encode(settings)),
        R"({"type":"appleReminder","isExcluded":false,"usesCustomTimeOffset":false,"timeOffsetSeconds":600})");
    settings.defaultConferenceUrl = platform::Url::parse("https://zoom.us/j/1");
    EXPECT_EQ(decodeJsonData<EventSettings>(encodeJsonData(settings)), settings);
    for (const char* bad :
         {R"({"type":"appleReminder","isExcluded":false,"timeOffsetSeconds":0})",
          R"({"type":"x","isExcluded":false,"usesCustomTimeOffset":false,"timeOffsetSeconds":0})"}) {
        EXPECT_THROW(decodeJsonData<EventSettings>(platform::dataOf(bad)), platform::DecodingError) << bad;
    }
    EventSettings otherType = settings;
    otherType.type = Event::EventType::calendarEvent;
    EXPECT_TRUE(settings.isEqual(otherType, true));
    EXPECT_FALSE(settings.isEqual(otherType, false));
}

}  // namespace
