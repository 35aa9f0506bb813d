#include "DoublingCases.h"
#include "Growing.h"

#include <array>
#include <string_view>
#include <utility>

namespace doubling {
namespace {

// Lines and items that are longer are left out.
constexpr std::size_t lineLimit = (std::size_t{1} << 20) - 1;
constexpr std::size_t itemLimit = (std::size_t{4} << 20) - 1;
constexpr std::size_t fileSize = std::size_t{8} << 20;
/// Small costs show when they are there several times.
constexpr int copies = 4;

constexpr std::string_view begin = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n";
constexpr std::string_view end = "END:VCALENDAR\r\n";

std::string calendar(const std::string& inside) {
    return std::string(begin) + inside + std::string(end);
}

std::string item(const std::string& kind, const std::string& uid, const std::string& lines) {
    return "BEGIN:" + kind + "\r\nUID:" + uid + "\r\nSUMMARY:T\r\nDTSTART:20260304T100000Z\r\n" + lines +
           "END:" + kind + "\r\n";
}

std::string itemsWith(const std::string& kind, const std::string& line) {
    std::string items;
    for (int i = 0; i < copies; ++i)
        items += item(kind, std::to_string(i), line + "\r\n");
    return calendar(items);
}

/// In a component of its own, where the property is one of those.
constexpr std::array itemProperties{"ACTION",
                                    "ATTACH",
                                    "ATTENDEE",
                                    "CATEGORIES",
                                    "CLASS",
                                    "COLOR",
                                    "COMMENT",
                                    "COMPLETED",
                                    "CONFERENCE",
                                    "CONTACT",
                                    "CREATED",
                                    "DESCRIPTION",
                                    "DTEND",
                                    "DTSTAMP",
                                    "DTSTART",
                                    "DUE",
                                    "DURATION",
                                    "EXDATE",
                                    "EXRULE",
                                    "GEO",
                                    "IMAGE",
                                    "LAST-MODIFIED",
                                    "LOCATION",
                                    "ORGANIZER",
                                    "PERCENT-COMPLETE",
                                    "PRIORITY",
                                    "RDATE",
                                    "RECURRENCE-ID",
                                    "RELATED-TO",
                                    "REQUEST-STATUS",
                                    "RESOURCES",
                                    "RRULE",
                                    "SEQUENCE",
                                    "STATUS",
                                    "SUMMARY",
                                    "TRANSP",
                                    "UID",
                                    "URL",
                                    "X-APPLE-TRAVEL-DURATION",
                                    "X-GOOGLE-CONFERENCE",
                                    "X-MICROSOFT-CDO-ALLDAYEVENT",
                                    "X-MICROSOFT-ONLINEMEETINGEXTERNALLINK",
                                    "X-OWN"};

constexpr std::array calendarProperties{"METHOD", "NAME", "X-WR-CALNAME", "X-APPLE-CALENDAR-COLOR", "X-OWN"};
constexpr std::array zoneProperties{"TZID",       "X-LIC-LOCATION", "DTSTART", "TZOFFSETFROM",
                                    "TZOFFSETTO", "RRULE",          "RDATE",   "TZNAME"};

/// What grows inside of one line, with the values that the property is made for.
constexpr std::pair<std::string_view, Growth> valueGrowths[] = {
    {"RRULE", {"days of the month", ":FREQ=MONTHLY;BYMONTHDAY=", "1,", "1"}},
    {"RRULE", {"seconds", ":FREQ=DAILY;BYHOUR=1;BYMINUTE=2;BYSECOND=", "1,2,3,", "1"}},
    {"RRULE", {"weekdays", ":FREQ=YEARLY;BYDAY=", "1MO,-2TU,", "WE"}},
    {"RRULE", {"positions", ":FREQ=MONTHLY;BYDAY=MO,TU;BYSETPOS=", "1,2,", "1"}},
    {"RRULE", {"parts", ":FREQ=DAILY", ";INTERVAL=1", ""}},
    {"EXDATE", {"dates", ":", "20260304T#00000Z,", "20260304T100000Z"}},
    {"EXDATE", {"wrong dates", ":", "x#,", "x"}},
    {"RDATE", {"dates", ":", "20260305T100000Z,", "20260304T100000Z"}},
    {"RDATE", {"periods", ";VALUE=PERIOD:", "20260305T100000Z/PT1H,", "20260304T100000Z/PT1H"}},
    {"DURATION", {"hours", ":P", "T1H", ""}},
    {"DTSTART", {"digits", ":", "2", ""}},
    {"SEQUENCE", {"digits", ":", "9", ""}},
    {"GEO", {"digits", ":", "1.5;", "2"}},
};

/// What notes, places and addresses are searched for links.
constexpr Growth textGrowths[] = {
    {"links", ":", "https://example.org/page/# ", ""},
    {"links without blanks", ":", "https://example.org/#", ""},
    {"calls", ":", "https://zoom.us/j/5550000# ", ""},
    {"calls of one meeting", ":", "https://zoom.us/j/5551234567 ", ""},
    {"calls of several services", ":",
     "https://zoom.us/j/5550000# https://meet.google.com/abc-defg-hij https://teams.microsoft.com/l/"
     "meetup-join/19%3ameeting_#%40thread.v2/0 ",
     ""},
    {"one long link", ":https://example.org/", "a", ""},
    {"one long query", ":https://zoom.us/j/5551234567?pwd=", "a=%41&amp;", ""},
    {"one long host", ":https://", "a.", "org/"},
    {"hosts", ":", "example.org ", ""},
    {"dots", ":", "a.", ""},
    {"schemes", ":", "https://", ""},
    {"colons and slashes", ":", "://", ""},
    {"signs at", ":", "a@", ""},
    {"mail addresses", ":", "ann#@example.org ", ""},
    {"brackets", ":https://example.org/", "(", ""},
    {"links in brackets", ":", "(https://example.org/#) ", ""},
    {"links in angles", ":", "<https://example.org/#>", ""},
    {"tags", ":", "<a href=\"https://example.org/#\">", ""},
    {"open tags", ":", "<", ""},
    {"open anchors", ":", "<a href=\"", ""},
    {"references", ":", "&amp;", ""},
    {"open references", ":<p>", "&", ""},
    {"numbered references", ":<p>", "&#38;", ""},
    {"redirects", ":", "https://www.google.com/url?q=", "https://zoom.us/j/5551234567"},
    {"safe links", ":",
     "https://eur01.safelinks.protection.outlook.com/?url=", "https%3A%2F%2Fzoom.us%2Fj%2F5551234567"},
    {"percents", ":https://example.org/", "%", ""},
    {"letters beyond ASCII", ":https://example.org/", "\xC3\xA9", ""},
    {"lines", ":", "line\\n", ""},
    {"digits", ":", "1234567890", ""},
    {"dial numbers", ":", "tel:+4912345\\,\\,#\\# ", ""},
    {"blanks", ":", " ", "x"},
    {"annotation marks", ":", "-::~:~::~:~:", ""},
    {"marks of right to left", ":", "\xE2\x80\x8F", ""},
    {"a link's beginning", ":", "https:/", ""},
    {"web names", ":", "www.", ""},
};

/// Lines of one event, many of them.
constexpr std::pair<std::string_view, std::string_view> manyLines[] = {
    {"attendees", "ATTENDEE;CN=Ann #;PARTSTAT=ACCEPTED:mailto:ann#@example.org\r\n"},
    {"attendees of one address", "ATTENDEE;CN=Ann:mailto:ann@example.org\r\n"},
    {"chairs", "ATTENDEE;ROLE=CHAIR;CN=Ann #:mailto:ann#@example.org\r\n"},
    {"attendees without a name", "ATTENDEE:urn:uuid:#\r\n"},
    {"organizers", "ORGANIZER;CN=Ann #:mailto:ann#@example.org\r\n"},
    {"alarms", "BEGIN:VALARM\r\nACTION:DISPLAY\r\nTRIGGER:-PT#M\r\nEND:VALARM\r\n"},
    {"open alarms", "BEGIN:VALARM\r\nTRIGGER:-PT#M\r\n"},
    {"ends of nothing", "END:VALARM\r\n"},
    {"unknown components", "BEGIN:X-OWN\r\nEND:X-OWN\r\n"},
    {"nested components", "BEGIN:X-OWN\r\n"},
    {"events inside", "BEGIN:VEVENT\r\n"},
    {"excluded dates", "EXDATE:20260305T10000#Z\r\n"},
    {"excluded dates of zones", "EXDATE;TZID=Zone #:20260305T100000\r\n"},
    {"added dates", "RDATE;TZID=Europe/Berlin:20260305T100000\r\n"},
    {"rules", "RRULE:FREQ=DAILY;COUNT=#\r\n"},
    {"wrong rules", "RRULE:FREQ=NEVER#\r\n"},
    {"summaries", "SUMMARY:title #\r\n"},
    {"notes", "DESCRIPTION:notes #\r\n"},
    {"links", "URL:https://example.org/#\r\n"},
    {"calls", "CONFERENCE;VALUE=URI:https://zoom.us/j/5550000#\r\n"},
    {"other calls", "X-MICROSOFT-SKYPETEAMSMEETINGURL:https://teams.microsoft.com/l/#\r\n"},
    {"own properties", "X-OWN-#:value\r\n"},
    {"lines without a property", "nonsense #\r\n"},
    {"empty lines", "\r\n"},
    {"blank lines", " \r\n"},
    {"lines of a bare CR", "X:\r"},
};

/// Inside of the calendar, many of them.
constexpr std::pair<std::string_view, std::string_view> manyParts[] = {
    {"events", "BEGIN:VEVENT\r\nUID:#\r\nDTSTART:20260304T100000Z\r\nEND:VEVENT\r\n"},
    {"events of one UID",
     "BEGIN:VEVENT\r\nUID:one\r\nSEQUENCE:#\r\nDTSTART:20260304T100000Z\r\nEND:VEVENT\r\n"},
    {"events without a UID", "BEGIN:VEVENT\r\nDTSTART:20260304T100000Z\r\nSUMMARY:#\r\nEND:VEVENT\r\n"},
    {"equal events without a UID", "BEGIN:VEVENT\r\nDTSTART:20260304T100000Z\r\nEND:VEVENT\r\n"},
    {"events without a start", "BEGIN:VEVENT\r\nUID:#\r\nEND:VEVENT\r\n"},
    {"events of zones", "BEGIN:VEVENT\r\nUID:#\r\nDTSTART;TZID=Zone #:20260304T100000\r\nEND:VEVENT\r\n"},
    {"zones with their events",
     "BEGIN:VTIMEZONE\r\nTZID:Zone #\r\nBEGIN:STANDARD\r\nDTSTART:20000101T000000\r\nTZOFFSETFROM:+0100\r\n"
     "TZOFFSETTO:+0200\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n"
     "BEGIN:VEVENT\r\nUID:#\r\nDTSTART;TZID=Zone #:20260304T100000\r\nEND:VEVENT\r\n"},
    {"zones of one name",
     "BEGIN:VTIMEZONE\r\nTZID:Zone\r\nEND:VTIMEZONE\r\n"
     "BEGIN:VEVENT\r\nUID:#\r\nDTSTART;TZID=Zone:20260304T100000\r\nEND:VEVENT\r\n"},
    {"changed occurrences",
     "BEGIN:VEVENT\r\nUID:one\r\nRECURRENCE-ID:20260304T1#00Z\r\nDTSTART:20260304T100000Z\r\nEND:VEVENT\r\n"},
    {"changes of this and the future",
     "BEGIN:VEVENT\r\nUID:master\r\nRECURRENCE-ID;RANGE=THISANDFUTURE;TZID=Etc/GMT+#:20260304T100000\r\n"
     "DTSTART:20260304T100000Z\r\nEND:VEVENT\r\n"},
    {"daily series",
     "BEGIN:VEVENT\r\nUID:#\r\nDTSTART:20200101T100000Z\r\nRRULE:FREQ=DAILY\r\nEND:VEVENT\r\n"},
    {"series of every second",
     "BEGIN:VEVENT\r\nUID:#\r\nDTSTART:20200101T100000Z\r\nRRULE:FREQ=SECONDLY\r\nEND:VEVENT\r\n"},
    {"series that never recur",
     "BEGIN:VEVENT\r\nUID:#\r\nDTSTART:20200101T100000Z\r\nRRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30\r\n"
     "END:VEVENT\r\n"},
    {"counted series",
     "BEGIN:VEVENT\r\nUID:#\r\nDTSTART:20200101T100000Z\r\nRRULE:FREQ=DAILY;COUNT=9999;BYHOUR=10\r\n"
     "END:VEVENT\r\n"},
    {"tasks", "BEGIN:VTODO\r\nUID:#\r\nDUE:20260304T100000Z\r\nEND:VTODO\r\n"},
    {"series of tasks",
     "BEGIN:VTODO\r\nUID:#\r\nDTSTART:20200101T100000Z\r\nDUE:20200101T110000Z\r\nRRULE:FREQ=DAILY\r\n"
     "END:VTODO\r\n"},
    {"free and busy times", "BEGIN:VFREEBUSY\r\nFREEBUSY:20260304T100000Z/PT1H\r\nEND:VFREEBUSY\r\n"},
    {"calendars", "END:VCALENDAR\r\nBEGIN:VCALENDAR\r\nMETHOD:CANCEL\r\n"},
    {"calendars in calendars", "BEGIN:VCALENDAR\r\nMETHOD:CANCEL\r\n"},
    {"cancelled calendars inside",
     "BEGIN:VCALENDAR\r\nMETHOD:CANCEL\r\nBEGIN:VEVENT\r\nUID:#\r\nDTSTART:20260304T100000Z\r\nEND:VEVENT\r\n"
     "END:VCALENDAR\r\n"},
    {"open zones", "BEGIN:VTIMEZONE\r\nBEGIN:STANDARD\r\n"},
};

constexpr std::pair<std::string_view, std::string_view> manyInZone[] = {
    {"observances",
     "BEGIN:STANDARD\r\nDTSTART:20000101T0000#\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\nEND:"
     "STANDARD\r\n"},
    {"observances with rules",
     "BEGIN:DAYLIGHT\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\n"
     "RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\r\nEND:DAYLIGHT\r\n"},
    {"dates",
     "BEGIN:STANDARD\r\nDTSTART:20000101T000000\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\n"
     "RDATE:20010101T000000,20020101T000000\r\nEND:STANDARD\r\n"},
    {"names", "TZID:Zone #\r\n"},
};

std::string zoneWith(const std::string& lines) {
    return calendar("BEGIN:VTIMEZONE\r\nTZID:Zone\r\n" + lines + "END:VTIMEZONE\r\n" +
                    "BEGIN:VEVENT\r\nUID:1\r\nDTSTART;TZID=Zone:20260304T100000\r\nEND:VEVENT\r\n");
}

std::string line(std::string_view property, const Growth& growth, std::size_t size) {
    return std::string(property).append(growth.before) + repeated(growth.piece, size) +
           std::string(growth.after);
}

void addLines(std::vector<Case>& cases, const std::string& where, std::string_view property,
              const std::function<std::string(const std::string&)>& around) {
    const auto add = [&](const Growth& growth) {
        cases.push_back({where + " " + std::string(property) + ": " + std::string(growth.name),
                         Case::Kind::calendar, lineLimit,
                         [=](std::size_t size) { return around(line(property, growth, size)); }});
    };
    for (const auto& growth : lineGrowths)
        add(growth);
    for (const auto& [name, growth] : valueGrowths) {
        if (name == property) add(growth);
    }
}

}  // namespace

std::vector<Case> calendarCases() {
    std::vector<Case> cases;
    for (const auto* kind : {"VEVENT", "VTODO"}) {
        const std::string name = kind;
        for (const auto* property : itemProperties) {
            addLines(cases, name, property,
                     [name](const std::string& text) { return itemsWith(name, text); });
        }
        for (const auto& [what, piece] : manyLines) {
            cases.push_back({name + ": many " + std::string(what), Case::Kind::calendar, itemLimit,
                             [name, piece = piece](std::size_t size) {
                                 return calendar(item(name, "1", repeated(piece, size)));
                             }});
        }
    }
    for (const auto* property : {"ACTION", "TRIGGER", "X-OWN"}) {
        addLines(cases, "VALARM", property, [](const std::string& text) {
            return itemsWith("VEVENT", "BEGIN:VALARM\r\n" + text + "\r\nEND:VALARM");
        });
    }
    for (const auto* property : {"DESCRIPTION", "LOCATION", "SUMMARY", "URL", "CONFERENCE"}) {
        for (const auto& growth : textGrowths) {
            cases.push_back(
                {std::string(property) + " of " + std::string(growth.name), Case::Kind::calendar, lineLimit,
                 [=](std::size_t size) { return itemsWith("VEVENT", line(property, growth, size)); }});
        }
    }
    for (const auto* property : calendarProperties)
        addLines(cases, "VCALENDAR", property,
                 [](const std::string& text) { return calendar(text + "\r\n"); });
    for (const auto* property : zoneProperties) {
        addLines(cases, "VTIMEZONE", property,
                 [](const std::string& text) { return zoneWith(text + "\r\n"); });
        addLines(cases, "STANDARD", property, [](const std::string& text) {
            return zoneWith("BEGIN:STANDARD\r\n" + text + "\r\nEND:STANDARD\r\n");
        });
    }
    for (const auto& [what, piece] : manyInZone) {
        cases.push_back({"VTIMEZONE: many " + std::string(what), Case::Kind::calendar, fileSize,
                         [piece = piece](std::size_t size) { return zoneWith(repeated(piece, size)); }});
    }
    for (const auto& [what, piece] : manyParts) {
        cases.push_back(
            {"many " + std::string(what), Case::Kind::calendar, fileSize, [piece = piece](std::size_t size) {
                 return calendar(item("VEVENT", "master", "RRULE:FREQ=DAILY\r\n") + repeated(piece, size));
             }});
    }
    return cases;
}

}  // namespace doubling
