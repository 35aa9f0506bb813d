#include <DesktopHost/PlacementsFile.h>

#include <gmock/gmock.h>
#include <support/TestEnvironment.h>

namespace {

using namespace hbr;
using platform::Corner;
using platform::WidgetFamily;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class PlacementsFileTest : public testing::Test {
  protected:
    std::filesystem::path write(const std::string& text) const {
        return environment.home.write("config/heedbanner/desktop.toml", text);
    }
    std::string text() const { return test::readFile(file.path()); }
    std::string diagnostics() const { return environment.reports(); }

    test::TestEnvironment environment;
    PlacementsFile file{environment};
};

TEST_F(PlacementsFileTest, KeepsWidgetsAcrossPrograms) {
    EXPECT_THAT(file.load().widgets, IsEmpty());
    ASSERT_TRUE(file.update([](std::vector<PlacedWidget>& widgets) {
        widgets.push_back(
            placedWidget("upcoming", WidgetFamily::systemLarge, Corner::topEnd, "DP \"1\"", widgets));
        widgets.push_back(
            placedWidget("current", WidgetFamily::systemSmall, Corner::topEnd, "DP \"1\"", widgets));
        widgets.back().placement.position = {{12.4, -7}};
    }));
    const auto widgets = PlacementsFile(environment).load().widgets;
    ASSERT_THAT(widgets, SizeIs(2));
    EXPECT_EQ(widgets[0].name, "upcoming");
    EXPECT_EQ(widgets[0].family, WidgetFamily::systemLarge);
    EXPECT_EQ(widgets[0].placement.output, "DP \"1\"");
    EXPECT_EQ(widgets[1].placement.order, 1);
    EXPECT_EQ(widgets[1].placement.position, (platform::Point{12, -7}));
    EXPECT_THAT(diagnostics(), IsEmpty());
}

TEST_F(PlacementsFileTest, ChangesWhatChangedAndKeepsCommentsUnknownKeysAndBadEntries) {
    write(
        "# mine\nscale = 1.5\nurgent = \"never\"\ntheme = \"later\"\n\n"
        "[[widget]] # first\nname = \"upcoming\" # the # list\nfamily = \"small\"\nflavour = 1\n\n"
        "[[widget]]\nfamily = \"large\"\n\n"
        "# the removed one\n[[ widget ]]\nname = \"current\"\n\n"
        "# others\n[other]\nkey = 1\n");
    EXPECT_EQ(file.load().scale, 1.5);
    EXPECT_EQ(file.load().urgent, UrgentAlerts::never);
    ASSERT_THAT(file.load().widgets, SizeIs(2));
    ASSERT_TRUE(file.update([](std::vector<PlacedWidget>& widgets) {
        widgets[0].family = WidgetFamily::systemMedium;
        widgets[0].placement.output = "DP-1";
        widgets.erase(widgets.begin() + 1);
        widgets.push_back(
            placedWidget("countdown", WidgetFamily::systemSmall, Corner::bottomStart, "", widgets));
    }));
    EXPECT_EQ(text(),
              "# mine\nscale = 1.5\nurgent = \"never\"\ntheme = \"later\"\n\n"
              "[[widget]] # first\nname = \"upcoming\" # the # list\nfamily = \"medium\"\nflavour = 1\n"
              "output = \"DP-1\"\n\n"
              "[[widget]]\nfamily = \"large\"\n\n"
              "# others\n[other]\nkey = 1\n\n"
              "[[widget]]\nname = \"countdown\"\nfamily = \"small\"\ncorner = \"bottom-start\"\norder = 0\n");
    EXPECT_THAT(diagnostics(), HasSubstr("widget 2, name: is missing"));
}

TEST_F(PlacementsFileTest, RewritesALayoutThatItCannotEdit) {
    write("widget = [{name = \"current\", flavour = 1}]\nnotifications = false\n");
    ASSERT_TRUE(file.update(
        [](std::vector<PlacedWidget>& widgets) { widgets[0].family = WidgetFamily::systemLarge; }));
    const auto contents = file.load();
    ASSERT_THAT(contents.widgets, SizeIs(1));
    EXPECT_EQ(contents.widgets[0].family, WidgetFamily::systemLarge);
    EXPECT_FALSE(contents.showsNotifications);
    EXPECT_THAT(text(), HasSubstr("flavour"));
}

TEST_F(PlacementsFileTest, ABrokenFileIsReportedAndSetAsideBeforeTheFirstWrite) {
    const auto path = write("[[widget]\nname = \"upcoming\"\n");
    EXPECT_TRUE(file.load().isBroken);
    EXPECT_THAT(diagnostics(), HasSubstr("desktop.toml:1"));
    ASSERT_TRUE(file.update([](std::vector<PlacedWidget>& widgets) {
        widgets.push_back(placedWidget("current", WidgetFamily::systemSmall, Corner::topEnd, "", widgets));
    }));
    EXPECT_THAT(file.load().widgets, SizeIs(1));
    EXPECT_THAT(test::readFile(path.string() + ".unreadable-1"), HasSubstr("upcoming"));
    EXPECT_THAT(diagnostics(), HasSubstr("set aside as"));
}

TEST_F(PlacementsFileTest, WhatIsWrongIsNamedAndTheRestGoesOn) {
    struct Case {
        const char* text;
        std::size_t widgets;
        const char* reported;
    };
    for (const Case& c : {Case{"widget = 1", 0, "widget: must be an array of tables"},
                          Case{"[[widget]]\nname=\"a\"\nfamily=\"huge\"", 0, "widget 1, family: must be"},
                          Case{"[[widget]]\nname=\"a\"\ncorner=\"left\"", 1, "widget 1, corner: must be"},
                          Case{"[[widget]]\nname=\"a\"\nx=\"1\"\ny=2", 1, "widget 1, x: must be a number"},
                          Case{"scale = 9", 0, "scale: must be a number from 0.5 to 4"},
                          Case{"urgent = \"often\"", 0, "urgent: must be soon, always or never"},
                          Case{"notifications = 2", 0, "notifications: must be true or false"}}) {
        write(c.text);
        EXPECT_THAT(file.load().widgets, SizeIs(c.widgets)) << c.text;
        EXPECT_THAT(diagnostics(), HasSubstr(c.reported)) << c.text;
    }
}

}  // namespace
