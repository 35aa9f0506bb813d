#include "ItemDetails.h"
#include "ItemScanner.h"

#include <gtest/gtest.h>
#include <libical/ical.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>

namespace platform {
namespace {

/// One line a fact, in the same words on both sides.
using Facts = std::vector<std::string>;

std::string number(auto value) {
    return std::to_string(static_cast<int>(value));
}

Facts ours(const ScannedItem& item) {
    const auto details = ItemDetails::parse(item.text, {}, TimeZone::utc());
    Facts facts = {"title " + details.title.value_or("-"), "location " + details.location.value_or("-"),
                   "notes " + details.notes.value_or("-"), "status " + number(details.status)};
    const auto add = [&](const EKParticipant& participant) {
        facts.push_back(asciiLower(participant.url) + " " + participant.name.value_or("-") + " " +
                        number(participant.participantStatus));
    };
    for (const auto& attendee : details.attendees.value_or(std::vector<EKParticipant>()))
        add(attendee);
    if (details.organizer) facts.push_back("by " + asciiLower(details.organizer->url));
    for (const auto& alarm : details.alarms.value_or(std::vector<ItemDetails::Alarm>())) {
        facts.push_back(alarm.absoluteDate
                            ? "at " + formatRfc3339(*alarm.absoluteDate)
                            : number(alarm.offset) + (alarm.fromEnd ? " from the end" : " from the start"));
    }
    return facts;
}

std::string valueOf(icalcomponent* component, icalproperty_kind kind) {
    auto* property = icalcomponent_get_first_property(component, kind);
    return property ? icalvalue_get_text(icalproperty_get_value(property)) : "-";
}

const std::map<icalproperty_status, EKEventStatus> statuses = {
    {ICAL_STATUS_CONFIRMED, EKEventStatus::confirmed},
    {ICAL_STATUS_TENTATIVE, EKEventStatus::tentative},
    {ICAL_STATUS_CANCELLED, EKEventStatus::canceled}};
const std::map<icalparameter_partstat, EKParticipantStatus> answers = {
    {ICAL_PARTSTAT_NEEDSACTION, EKParticipantStatus::pending},
    {ICAL_PARTSTAT_ACCEPTED, EKParticipantStatus::accepted},
    {ICAL_PARTSTAT_DECLINED, EKParticipantStatus::declined},
    {ICAL_PARTSTAT_TENTATIVE, EKParticipantStatus::tentative}};

auto either(const auto& table, auto key, auto fallback) {
    const auto known = table.find(key);
    return known == table.end() ? fallback : known->second;
}

Facts libicals(const ScannedItem& item) {
    const std::unique_ptr<icalcomponent, void (*)(icalcomponent*)> component(
        icalparser_parse_string(item.text.c_str()), icalcomponent_free);
    auto* root = component.get();
    Facts facts = {"title " + valueOf(root, ICAL_SUMMARY_PROPERTY),
                   "location " + valueOf(root, ICAL_LOCATION_PROPERTY),
                   "notes " + valueOf(root, ICAL_DESCRIPTION_PROPERTY),
                   "status " + number(either(statuses, icalcomponent_get_status(root), EKEventStatus::none))};
    for (auto* p = icalcomponent_get_first_property(root, ICAL_ATTENDEE_PROPERTY); p;
         p = icalcomponent_get_next_property(root, ICAL_ATTENDEE_PROPERTY)) {
        auto* name = icalproperty_get_first_parameter(p, ICAL_CN_PARAMETER);
        auto* answer = icalproperty_get_first_parameter(p, ICAL_PARTSTAT_PARAMETER);
        const auto word = answer ? icalparameter_get_partstat(answer) : ICAL_PARTSTAT_NEEDSACTION;
        facts.push_back(asciiLower(icalproperty_get_attendee(p)) + " " +
                        (name ? icalparameter_get_cn(name) : "-") + " " +
                        number(either(answers, word, EKParticipantStatus::unknown)));
    }
    if (auto* p = icalcomponent_get_first_property(root, ICAL_ORGANIZER_PROPERTY))
        facts.push_back("by " + asciiLower(icalproperty_get_organizer(p)));
    for (auto* alarm = icalcomponent_get_first_component(root, ICAL_VALARM_COMPONENT); alarm;
         alarm = icalcomponent_get_next_component(root, ICAL_VALARM_COMPONENT)) {
        auto* action = icalcomponent_get_first_property(alarm, ICAL_ACTION_PROPERTY);
        auto* p = icalcomponent_get_first_property(alarm, ICAL_TRIGGER_PROPERTY);
        if (!p || (action && equalIgnoringCase(icalproperty_get_value_as_string(action), "NONE"))) continue;
        const auto trigger = icalproperty_get_trigger(p);
        auto* related = icalproperty_get_first_parameter(p, ICAL_RELATED_PARAMETER);
        const bool fromEnd = related && icalparameter_get_related(related) == ICAL_RELATED_END;
        facts.push_back(icaltime_is_null_time(trigger.time)
                            ? number(icaldurationtype_as_int(trigger.duration)) +
                                  (fromEnd ? " from the end" : " from the start")
                            : "at " + formatRfc3339(Date::since1970(
                                          static_cast<double>(icaltime_as_timet(trigger.time)))));
    }
    return facts;
}

std::size_t compare(const std::filesystem::path& path, std::string bytes) {
    CollectedDiagnostics diagnostics;
    ZonePool zones;
    const auto file = scanItems(path, std::move(bytes), diagnostics, zones);
    for (const auto& item : file.items)
        EXPECT_EQ(ours(item), libicals(item)) << path << ":" << item.line << "\n" << item.text;
    return file.items.size();
}

/// Encodings are resolved before either side reads an item.
TEST(ItemDetails, AgreeWithLibicalOnLines) {
    const auto alarm = [](const std::string& lines) { return "BEGIN:VALARM\n" + lines + "\nEND:VALARM"; };
    const std::string lines[] = {
        "SUMMARY:\nSUMMARY:the first one with a value\nSUMMARY:not this one",
        "SUMMARY: \t blanks at both ends \t \nLOCATION:",
        "summary;language=de:names in any letter case",
        "SUMMARY;X-A=\"a:b;c\";X-B=d:quoted parameters",
        "SUMMARY;X-EMPTY=;X-B=d:empty parameter",
        "DESCRIPTION:a\\nb\\Nc\\,d\\;e\\\\nf\\\"g, h; i: \"j\"",
        "DESCRIPTION:one\n  two\n\tthree\n ",
        "SUMMARY:caf\xC3\n \xA9",
        "SUMMARY:caf\xE9",
        "STATUS:\nSTATUS:confirmed\nSTATUS:CANCELLED",
        "STATUS: tentative ",
        "STATUS:X-OTHER\nSTATUS:CANCELLED",
        "ATTENDEE;CN=\"Lovelace, Ada; K:\";PARTSTAT=ACCEPTED:mailto:ada@example.org",
        "ATTENDEE;PARTSTAT=\"DECLINED\";CN=Ada Lovelace:MAILTO:ada@example.org",
        "attendee;cn=a^nb^'c^^d^e^;partstat=tentative:mailto:ada@example.org ",
        "ATTENDEE;CN=one;CN=two;PARTSTAT=X-LATER:mailto:ada@example.org",
        "ATTENDEE;DELEGATED-FROM=\"mailto:bob@example.org\",\"mailto:eve@example.org\";CN=A:urn:uuid:1",
        "ATTENDEE:\nATTENDEE:mailto:ada@example.org\nORGANIZER:\nORGANIZER;CN=B:mailto:bob@example.org",
        alarm("TRIGGER:-PT15M"),
        alarm("TRIGGER:-P1W\nTRIGGER:PT1H") + "\n" + alarm("ACTION:none\nTRIGGER:PT5M"),
        alarm("action:display\ntrigger;related=end:+P1DT2H3M4S"),
        alarm("TRIGGER;RELATED=START;VALUE=DURATION:PT0S"),
        alarm("TRIGGER;VALUE=DATE-TIME:20260304T080000Z") + "\n" + alarm("TRIGGER:15 minutes"),
        alarm("TRIGGER:PT1M\n" + alarm("TRIGGER:PT2M"))};
    for (const auto& line : lines)
        EXPECT_EQ(compare("a.ics", "BEGIN:VCALENDAR\nBEGIN:VEVENT\nDTSTART:20260304T090000Z\n" + line +
                                       "\nEND:VEVENT\nEND:VCALENDAR\n"),
                  1u);
}

TEST(ItemDetails, AgreeWithLibicalOnFiles) {
    std::size_t items = 0;
    for (const auto* folder : {EDGE_CASES, EXAMPLES}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (entry.path().extension() != ".ics") continue;
            std::ifstream stream(entry.path(), std::ios::binary);
            items += compare(entry.path(), {std::istreambuf_iterator<char>(stream), {}});
        }
    }
    EXPECT_GT(items, 400u);
}

}  // namespace
}  // namespace platform
