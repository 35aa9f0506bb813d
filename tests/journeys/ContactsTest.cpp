#include "Journey.h"

#include <gmock/gmock.h>

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

const std::string now = "2026-03-04T09:00:00Z";

class Contacts : public ::test::Journey {
  protected:
    Contacts() {
        home.write("calendars/a.ics",
                   test::oneEvent("Quarter planning", "20260304T084000Z", "20260304T100000Z",
                                  "LOCATION:Room 4\nSTATUS:TENTATIVE\n"
                                  "DESCRIPTION:Numbers\\n----( Video Call )----\\nhttps://zoom.us/j/99\\n"
                                  "---===---\\nPlans\n"
                                  "ORGANIZER;CN=Boss:mailto:ada@example.org\n"
                                  "ATTENDEE;CN=Boss;PARTSTAT=ACCEPTED:mailto:ada@example.org\n"
                                  "ATTENDEE;CN=\"Harper, John\":mailto:jh@example.org\n"));
        home.write("calendars/b.ics",
                   test::oneEvent("Quarter review", "20260305T084000Z", "20260305T100000Z"));
        home.write("people/ada.vcf",
                   "BEGIN:VCARD\nVERSION:4.0\nN:Lovelace;Ada\nEMAIL:ADA@example.org\nEND:VCARD\n");
        companion({"setup", home / "calendars"});
    }
};

TEST_F(Contacts, AnEventsCardNamesItsParticipants) {
    const auto before = companion({"show", "now", "--now", now});
    EXPECT_EQ(before.exitCode, 0) << before.err;
    EXPECT_THAT(before.out, HasSubstr("Boss (organizer), accepted"));
    EXPECT_THAT(companion({"contacts", "add", home / "people"}).out, HasSubstr("added, 1 contact\n"));
    EXPECT_THAT(companion({"contacts", "add", home / "people"}).out, HasSubstr("already there"));

    const auto card = companion({"show", "planning", "--now", now});
    EXPECT_EQ(card.exitCode, 0) << card.err;
    EXPECT_THAT(card.out,
                AllOf(HasSubstr("Quarter planning\n"), HasSubstr("until 11:00"), HasSubstr("tentative"),
                      HasSubstr("Room 4"), HasSubstr("Zoom  https://zoom.us/j/99"), HasSubstr("Numbers"),
                      HasSubstr("Plans"), HasSubstr("Ada Lovelace (organizer), accepted  ada@example.org"),
                      HasSubstr("Harper, John, no answer yet"), Not(HasSubstr("Boss")),
                      Not(HasSubstr("Video Call"))));
    EXPECT_EQ(card.err, "");
    EXPECT_THAT(companion({"show", "next", "--now", now}).out, HasSubstr("Quarter review"));

    EXPECT_EQ(companion({"contacts", "remove", "people"}).exitCode, 0);
    EXPECT_EQ(json(companion({"contacts", "list", "--json"})).asArray()->size(), 0u);
    EXPECT_EQ(json(companion({"accounts", "list", "--json"})).asArray()->size(), 1u);
    EXPECT_EQ(companion({"show", "now", "--now", now}).out, before.out);
}

TEST_F(Contacts, WhatCannotBeActedOnIsToldByName) {
    companion({"contacts", "add", home / "people"});
    struct {
        Arguments arguments;
        int exitCode;
        std::string message;
    } const cases[] = {{{"show", "quarter"}, 3, "several events match \"quarter\":\n  today, 9:40"},
                       {{"show", "lunch"}, 3, "no event matches \"lunch\""},
                       {{"show", "Quarter revue"}, 3, "did you mean \"Quarter review\"?"},
                       {{"show"}, 2, "EVENT"},
                       {{"contacts", "remove", "peopel"}, 3, "did you mean \"people\"?"},
                       {{"contacts", "remove", "calendars"}, 3, "heedbanner accounts remove"},
                       {{"contacts", "add", home / "missing"}, 1, "missing: there is no such file"},
                       {{"contacts", "add", home / "calendars"}, 3, "no contacts (.vcf files)"},
                       {{"contacts", "add", home / "calendars/a.ics"}, 1, "not a vCard file"}};
    for (auto [arguments, exitCode, message] : cases) {
        arguments.insert(arguments.end(), {"--now", now});
        const auto outcome = companion(arguments);
        EXPECT_EQ(outcome.exitCode, exitCode) << testing::PrintToString(arguments);
        EXPECT_THAT(outcome.err, HasSubstr(message));
        EXPECT_EQ(outcome.out, "");
    }
}

TEST_F(Contacts, DoctorNamesBadCardsAndPictures) {
    companion({"contacts", "add", home / "people"});
    EXPECT_EQ(companion({"doctor", "--now", now}).exitCode, 0);
    home.write("people/bad.vcf",
               "BEGIN:VCARD\nNOTE:nothing\nEND:VCARD\n"
               "BEGIN:VCARD\nFN:Pic\nPHOTO;ENCODING=b:*\nEND:VCARD\n");
    const auto doctor = companion({"doctor", "--now", now});
    EXPECT_EQ(doctor.exitCode, 1);
    EXPECT_THAT(doctor.out, AllOf(HasSubstr("  2 contacts\n"), HasSubstr("bad.vcf:1: VCARD"),
                                  HasSubstr("bad.vcf:6: PHOTO")));
}

}  // namespace
