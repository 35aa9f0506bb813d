#include "Journey.h"

#include <gmock/gmock.h>

namespace {

using ::test::Journey;
using ::testing::HasSubstr;
using Language = Journey;

TEST_F(Language, TheWidgetsSpeakTheUsersLanguage) {
    struct Case {
        std::map<std::string, std::string> variables;
        std::string widget;
        std::string header;
        std::string tomorrow;
    };
    const std::vector<Case> cases = {
        {{{"LANGUAGE", "de_AT"}}, "Anstehende Termine", "ANSTEHENDE TERMINE", "Morgen"},
        {{{"LANGUAGE", "fr:de"}, {"LC_ALL", "en_GB.UTF-8"}},
         "Anstehende Termine",
         "ANSTEHENDE TERMINE",
         "Morgen"},
        {{{"LC_ALL", "he_IL.UTF-8"}}, "אירועים קרובים", "אירועים קרובים", "מחר"},
        {{{"LANG", "iw_IL.UTF-8"}}, "אירועים קרובים", "אירועים קרובים", "מחר"},
        {{{"LANGUAGE", "fr"}, {"LC_ALL", "de_DE.UTF-8"}}, "Upcoming Events", "UPCOMING EVENTS", "Tomorrow"},
        // Capitals follow the language of the text: no dotted "İ" in English.
        {{{"LANGUAGE", "en"}, {"LC_ALL", "tr_TR.UTF-8"}}, "Upcoming Events", "UPCOMING EVENTS", "Tomorrow"},
    };
    for (const auto& [added, widget, header, tomorrow] : cases) {
        variables = {{"TZ", "Europe/Berlin"}};
        variables.insert(added.begin(), added.end());
        EXPECT_THAT(widgets({"gallery"}).out, HasSubstr("upcoming: " + widget + "."));
        const auto drawn = widgets({"render", "upcoming", "--demo", "--family", "large", "--format", "text",
                                    "--now", "2026-03-04T09:00:00+01:00"});
        EXPECT_EQ(drawn.exitCode, 0) << drawn.err;
        EXPECT_THAT(drawn.out, HasSubstr(header + "\n"));
        EXPECT_THAT(drawn.out, HasSubstr(tomorrow + ",\n"));
    }
}

TEST_F(Language, TheCompanionSpeaksTheUsersLanguage) {
    struct Case {
        const char* language;
        const char* noCalendars;
        const char* inBar;
    };
    for (const auto& [language, noCalendars, inBar] :
         {Case{"en", "no calendars yet; add them with: ", "No calendars yet"},
          {"de", "noch keine Kalender; hinzufügen mit: ", "Noch keine Kalender"},
          {"he", "עדיין אין לוחות שנה; הוספה: ", "עדיין אין לוחות שנה"}}) {
        variables = {{"TZ", "Europe/Berlin"}, {"LANGUAGE", language}, {"LC_ALL", "en_US.UTF-8"}};
        EXPECT_THAT(companion({"agenda"}).err, HasSubstr(std::string(noCalendars) + "heedbanner setup"));
        EXPECT_THAT(companion({"status"}).out, HasSubstr(inBar)) << language;
    }
}

}  // namespace
