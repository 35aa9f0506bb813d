#include "Journey.h"

#include <gmock/gmock.h>
#include <support/WithoutIsolates.h>

namespace {

using ::test::Journey;
using ::test::oneEvent;
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
    home.write("cal/lunch.ics", oneEvent("Lunch", "20260304T110000Z", "20260304T120000Z"));
    home.write("torn.ics", oneEvent("Torn", "2026XX", "2026XX"));
    const std::string now = "2026-03-04T09:00:00Z";
    struct Case {
        Arguments arguments;
        /// In English, German and Hebrew; without marks of direction.
        std::string texts[3];
    };
    const Case cases[] = {
        {{"agenda"},
         {"no calendars yet; add them with: heedbanner setup",
          "noch keine Kalender; hinzufügen mit: ", "עדיין אין לוחות שנה; הוספה: "}},
        {{"setup", home / "cal"},
         {"added, 1 calendar, 1 event", "hinzugefügt, 1 Kalender, 1 Termin", "נוסף, "}},
        {{"remind", "Tea", "--in", "5m", "--lead", "48h"},
         {"--lead takes at most a day (24h), not \"48h\"",
          "--lead: erlaubt ist höchstens ein Tag (24h), nicht „48h“",
          "--lead מקבל יממה לכל היותר (24h), לא \"48h\""}},
        // What is typed keeps its plain digits.
        {{"settings", "set", "timeOffsetSeconds", "x"},
         {"timeOffsetSeconds takes a whole number of seconds from 0 to 86400 (also as 90s, 5m, 1h), not "
          "\"x\"",
          "timeOffsetSeconds: erlaubt ist eine ganze Zahl von Sekunden, 0 bis 86400 (auch als 90s, 5m, 1h), "
          "nicht „x“",
          "מספר שלם של שניות, מ־0 עד 86400"}},
        {{"settings", "list"},
         {"Only invitations that you accepted: true or false",
          "Nur Einladungen, die Sie angenommen haben: true oder false", "רק הזמנות שאישרת: true או false"}},
        {{"rules", "add", "title", "contains", "Lunch"},
         {"letter case matters: added", "Groß-/Kleinschreibung wird beachtet: hinzugefügt", ": נוסף"}},
        {{"why", "Lunch"},
         {"Not shown: exclude rule 1 (title contains \"Lunch\") leaves it out.\n  To see it: heedbanner "
          "rules remove 1",
          "Nicht angezeigt: ausgeschlossen durch Regel 1 (Titel enthält \"Lunch\").\n  Zum Anzeigen: "
          "heedbanner "
          "rules remove 1",
          "לא מוצג: הוחרג לפי כלל 1 (כותרת מכיל את \"Lunch\").\n  כדי להציג: heedbanner rules remove 1"}},
        // For other programs it is English.
        {{"why", "Lunch", "--json"},
         {"it begins at 12:00\u202FPM", "it begins at 12:00\u202FPM", "it begins at 12:00\u202FPM"}},
        {{"open", "https://x.example"},
         {"is not a link of the widgets", "ist kein Link der Widgets", "אינו קישור של הווידג׳טים"}},
        {{"status", "--template", "{titel}"},
         {"unknown placeholder \"titel\" (did you mean \"title\"?)",
          "Platzhalter „titel“ ist unbekannt (meinten Sie „title“?)", "מציין המקום \"titel\" אינו מוכר"}},
        {{"accounts", "add", home / "torn.ics"}, {"torn", "torn", "torn"}},
        {{"next"},
         {"2 problems in 1 file, which", "2 Probleme in 1 Datei; womöglich", "שתי בעיות (קובץ אחד); "}},
    };
    const char* languages[] = {"en", "de", "he"};
    for (std::size_t i = 0; i < std::size(languages); ++i) {
        variables = {{"TZ", "Europe/Berlin"}, {"LANGUAGE", languages[i]}, {"LC_ALL", "en_US.UTF-8"}};
        for (const char* folder : {"config", "data", "cache"})
            std::filesystem::remove_all(home / folder);
        for (const auto& [arguments, texts] : cases) {
            Arguments all = arguments;
            all.insert(all.end(), {"--now", now});
            const auto outcome = companion(all);
            EXPECT_THAT(test::withoutIsolates(outcome.out + outcome.err), HasSubstr(texts[i]))
                << languages[i] << " " << arguments.front();
        }
    }
}

}  // namespace
