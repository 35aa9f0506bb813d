#include <HbrCore/CoreFixture.h>
#include <HeedbannerWidgetExtension/HeedbannerWidgetBundle.h>
#include <Values/JsonText.h>
#include <WidgetHost/WidgetCommandLine.h>
#include <gmock/gmock.h>

#include <sstream>

namespace {

using namespace hbr;
using test::meeting;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class WidgetCommands : public testing::Test {
  protected:
    WidgetCommands() {
        core.environment.change().resourceDirectories = platform::Environment::current()->resourceDirectories;
    }

    int run(std::vector<std::string> arguments) {
        out.str("");
        err.str("");
        platform::WidgetCommandLine::Program program{
            .name = "widgets",
            .summary = "S",
            .version = "1.2.3",
            .examples = {},
            .makeBundle = [this](platform::EnvironmentRef environment,
                                 bool demo) -> std::unique_ptr<platform::WidgetBundle> {
                if (demo) return HeedbannerWidgetBundle::demonstration(environment);
                return std::make_unique<HeedbannerWidgetBundle>(
                    environment, [this]() -> CoreServices& { return core.services(); });
            }};
        return platform::WidgetCommandLine(program, core.environment, out, err).run(arguments);
    }

    test::CoreFixture core;
    std::ostringstream out;
    std::ostringstream err;
};

TEST_F(WidgetCommands, AnswerInJson) {
    core.write("calendars/work.ics",
               meeting("Later", "20260304T120000Z") + meeting("Running", "20260304T083000Z"));
    core.reloaded();
    EXPECT_EQ(run({"timeline", "countdown", "--json"}), 0);
    const auto timeline = platform::parseJson(out.str()).value();
    EXPECT_EQ(*timeline.find("kind")->asString(), "com.quietlark.hbr.NextEventCountdownWidget");
    const auto& entry = timeline.find("entries")->asArray()->at(0);
    EXPECT_EQ(*entry.find("date")->asString(), "2026-03-04T09:00:00.000Z");
    EXPECT_EQ(*entry.find("event")->find("title")->asString(), "Later");
    EXPECT_EQ(*timeline.find("policy")->find("after")->asString(), "2026-03-04T12:01:00.000Z");

    EXPECT_EQ(run({"snapshot", "--json", "com.quietlark.hbr.CurrentEventsWidget"}), 0);
    const auto snapshot = platform::parseJson(out.str()).value();
    EXPECT_EQ(*snapshot.find("entry")->find("events")->asArray()->at(0).find("title")->asString(), "Running");

    EXPECT_EQ(run({"placeholder", "countdown", "--json", "--now", "2026-03-04T12:00:00+01:00"}), 0);
    const auto placeholder = platform::parseJson(out.str()).value();
    EXPECT_TRUE(placeholder.find("entry")->find("event")->isNull());
    EXPECT_EQ(*placeholder.find("entry")->find("date")->asString(), "2026-03-04T11:00:00.000Z");

    EXPECT_EQ(run({"gallery", "--json"}), 0);
    const auto gallery = platform::parseJson(out.str()).value();
    ASSERT_EQ(gallery.asArray()->size(), 3u);
    EXPECT_EQ(*gallery.asArray()->at(0).find("name")->asString(), "Next Event");
    EXPECT_EQ(gallery.asArray()->at(0).find("families")->asArray()->size(), 2u);
    EXPECT_THAT(err.str(), IsEmpty());
}

TEST_F(WidgetCommands, WrongWordsAreAnsweredWithWhatThereIs) {
    const std::tuple<std::vector<std::string>, int, const char*> cases[] = {
        {{"timelin", "countdown"}, 2, "did you mean \"timeline\""},
        {{}, 2, "widgets: "},
        {{"timeline"}, 2, "WIDGET"},
        {{"timeline", "upcomin"}, 1, "did you mean \"upcoming\"?); there are: countdown, upcoming, current"},
        {{"render", "countdown", "--family", "large", "--demo", "--format", "text"},
         1,
         "(there are: small, medium)"},
        {{"render", "current", "--entry", "1", "--demo", "--format", "text"}, 1, "no entry 1 (there is: 0)"},
        {{"render", "current", "--scale", "5", "--demo"}, 2, "scale"},
        {{"render", "current", "--scale", "nan", "--demo"}, 2, "scale"},
        {{"gallery", "--now", "yesterday"}, 2, "--now"}};
    for (const auto& [arguments, status, message] : cases) {
        EXPECT_EQ(run(arguments), status) << message;
        EXPECT_THAT(err.str(), HasSubstr(message));
        EXPECT_TRUE(status == 2 || err.str().find('\n') == err.str().size() - 1) << "one line: " << err.str();
        EXPECT_THAT(out.str(), IsEmpty());
    }
    EXPECT_EQ(run({"timeline", "--help"}), 0);
    EXPECT_EQ(run({"-V"}), 0);
    EXPECT_EQ(out.str(), "widgets 1.2.3\n");
}

TEST_F(WidgetCommands, RenderDrawsDemonstrationEventsWithoutTouchingASetting) {
    EXPECT_EQ(run({"render", "upcoming", "--family", "large", "--demo", "--format", "text"}), 0);
    EXPECT_THAT(out.str(), HasSubstr("Design Sync"));
    EXPECT_FALSE(
        std::filesystem::exists(core.environment->configDirectory / "group.com.quietlark.hbr.plist"));

    const auto file = core.environment.home / "w.png";
    EXPECT_EQ(run({"render", "countdown", "--demo", "--scale", "2", "-o", file}), 0) << err.str();
    EXPECT_THAT(test::readFile(file), StartsWith("\x89PNG"));
    EXPECT_EQ(run({"render", "countdown", "--demo", "-o", core.environment.home / "none/w.svg"}), 1);
    EXPECT_THAT(err.str(), HasSubstr("none/w.svg"));
}

}  // namespace
