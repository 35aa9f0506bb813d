#include <HeedbannerWidgetExtension/WidgetStrings.h>

#include <gmock/gmock.h>
#include <support/TestEnvironment.h>

#include <string>
#include <vector>

namespace {

TEST(WidgetStrings, AreInTheLanguageThatTheUserPrefers) {
    const std::string key = "^[%lld more events](inflect: true)";
    for (const auto& [languages, header, one, two, three] : std::vector<
             std::tuple<std::vector<std::string>, std::string, std::string, std::string, std::string>>{
             {{"en-GB"}, "Current events", "1 more event", "2 more events", "3 more events"},
             {{"de-AT"}, "Laufende Termine", "1 weiterer Termin", "2 weitere Termine", "3 weitere Termine"},
             {{"iw-IL"}, "אירועים נוכחיים", "עוד אירוע אחד", "עוד שני אירועים", "עוד 3 אירועים"}}) {
        test::TestEnvironment world;
        world.change().locale.languages = languages;
        const hbr::WidgetStrings strings(world.ref());
        EXPECT_EQ(strings.text("Widget.upcomingEvent.currentEvents"), header);
        EXPECT_EQ(strings.counted(key, 1), one);
        EXPECT_EQ(strings.counted(key, 2), two);
        EXPECT_EQ(strings.counted(key, 3), three);
    }
}

TEST(WidgetStrings, EnglishReplacesWhatATableLacks) {
    test::TestEnvironment world("2026-03-04T09:00:00Z", "Europe/Berlin", "de_DE");
    test::TemporaryDirectory directory;
    directory.write("HeedbannerWidgetExtension.bundle/en.lproj/Localizable.json",
                    R"({"a": "A", "n": "%i events", "n#one": "%i event"})");
    directory.write("HeedbannerWidgetExtension.bundle/de.lproj/Localizable.json", R"({"b": "B"})");
    world.change().resourceDirectories = {directory.path()};
    const hbr::WidgetStrings strings(world);
    EXPECT_EQ(strings.text("a"), "A");
    EXPECT_EQ(strings.text("b"), "B");
    EXPECT_EQ(strings.counted("n", 1), "1 event");
    EXPECT_EQ(strings.text("c"), "c");
}

}  // namespace
