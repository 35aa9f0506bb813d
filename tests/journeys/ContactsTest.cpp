#include "Journey.h"

namespace {

class Contacts : public test::Journey {
  protected:
    Contacts() {
        currentTime = "2026-03-04T09:00:00Z";
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
        expect("setup ~/calendars");
    }
};

TEST_F(Contacts, AnEventsCardNamesItsParticipants) {
    const auto before = expect("show now", {"Boss (organizer), accepted"});
    expectEach({{"contacts add ~/people", 0, {"added, 1 contact\n"}},
                {"contacts add ~/people", 0, {"already there"}},
                {"show planning",
                 0,
                 {"Quarter planning\n", "until 11:00", "tentative", "Room 4", "Zoom  https://zoom.us/j/99",
                  "Numbers", "Plans", "Ada Lovelace (organizer), accepted  ada@example.org",
                  "Harper, John, no answer yet", "!Boss", "!Video Call"}},
                {"show next", 0, {"Quarter review"}},
                {"contacts remove people"},
                {"contacts list --json", 0, {"=[]\n"}},
                {"show now", 0, {"=" + before.out}}});
    EXPECT_EQ(ask("accounts list").asArray()->size(), 1u);
}

TEST_F(Contacts, WhatCannotBeActedOnIsReportedByName) {
    expectEach({{"contacts add ~/people"},
                {"show quarter", 3, {"several events match \"quarter\":\n  today, 9:40"}},
                {"show lunch", 3, {"no event matches \"lunch\""}},
                {"show 'Quarter revue'", 3, {"did you mean \"Quarter review\"?"}},
                {"show", 2, {"EVENT"}},
                {"contacts remove peopel", 3, {"did you mean \"people\"?"}},
                {"contacts remove calendars", 3, {"heedbanner accounts remove"}},
                {"contacts add ~/missing", 1, {"missing: there is no such file"}},
                {"contacts add ~/calendars", 3, {"no contacts (.vcf files)"}},
                {"contacts add ~/calendars/a.ics", 1, {"not a vCard file"}}});
}

TEST_F(Contacts, DoctorNamesBadCardsAndPictures) {
    expectEach({{"contacts add ~/people"}, {"doctor"}});
    home.write("people/bad.vcf",
               "BEGIN:VCARD\nNOTE:nothing\nEND:VCARD\n"
               "BEGIN:VCARD\nFN:Pic\nPHOTO;ENCODING=b:*\nEND:VCARD\n");
    expect("doctor", 1, {"  2 contacts\n", "bad.vcf:1: VCARD", "bad.vcf:6: PHOTO"});
}

}  // namespace
