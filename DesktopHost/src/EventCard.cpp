#include "EventCard.h"

#include "AlertMessage.h"

#include <HbrCore/ConferenceLinks/VideoCallAnnotation.h>
#include <HbrCore/Events/EventLookup.h>
#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>
#include <HbrUtils/Truncation.h>
#include <TimeAndText/Text.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace hbr {

namespace {

std::string remarkOf(const platform::Environment& environment, const Participant& participant) {
    switch (participant.status) {
        case ParticipantStatus::accepted:
            return L10n::Alert::Participants::Status::accepted(environment);
        case ParticipantStatus::tentative:
            return L10n::Alert::Participants::Status::tentative(environment);
        case ParticipantStatus::declined:
            return L10n::Alert::Participants::Status::declined(environment);
        case ParticipantStatus::pending:
            return L10n::Alert::Participants::Status::pending(environment);
        case ParticipantStatus::unknown:
            break;
    }
    return {};
}

/// The lines of a text, but for those that are only the link of a call: a button joins it already.
std::string withoutCalls(std::string_view text, const Event& event, bool offersCall) {
    std::unordered_set<std::string> calls;
    if (offersCall) {
        for (const VideoConferenceLink& link : event.videoConferenceLinks)
            calls.insert(link.url.absoluteString());
    }
    std::string rest;
    for (const std::string& line : platform::split(text, "\n")) {
        if (!calls.contains(platform::trimmed(line))) rest += line + "\n";
    }
    return platform::trimmed(rest);
}

/// Rows of participants in a card; the others are counted in one row more.
constexpr std::size_t mostPeople = 50;
/// Calls to choose from; the text of the card says that there are more.
constexpr std::size_t mostCalls = 20;

/// In the event's order.
std::vector<platform::Card::Person> rowsOf(const platform::Environment& environment,
                                           const std::vector<Participant>& people) {
    std::vector<platform::Card::Person> rows;
    for (const Participant& one : people) {
        if (rows.size() == mostPeople) {
            const auto more = static_cast<std::int64_t>(people.size() - mostPeople);
            rows.emplace_back().name = L10n::Alert::participantsOverflowToolTip(environment, more);
            break;
        }
        rows.push_back({.name = one.displayName(environment),
                        .remark = remarkOf(environment, one),
                        .initials = one.initials(),
                        .picture = one.image});
    }
    return rows;
}

/// The service, and where several are of the same one, what of the link distinguishes them.
std::string callLabel(const VideoConferenceLink& link, bool isOnlyOfItsService) {
    if (isOnlyOfItsService) return link.service.name;
    constexpr int longest = 40;
    std::string address = link.url.absoluteString();
    if (const auto scheme = address.find("://"); scheme != std::string::npos) address.erase(0, scheme + 3);
    return link.service.name + ": " + truncated(address, longest, "…");
}

std::string peopleHeading(const platform::Environment& environment, std::size_t count) {
    const auto number = static_cast<std::int64_t>(count);
    return count == 1 ? L10n::Alert::Participants::participant(environment, number)
                      : L10n::Alert::Participants::participants(environment, number);
}

void addCalendarButtons(platform::Card& card, const CardTexts& texts, const EventRef& event,
                        HiddenPart hidden, const EventCardActions& actions) {
    const platform::Environment& environment = texts.environment();
    card.buttons.push_back({L10n::Alert::showInCalendarTooltip(environment),
                            [show = actions.showInCalendar, event] { show(*event); }});
    if (hidden != HiddenPart::none) {
        const bool isSeries = event->isRecurring && hidden == HiddenPart::all;
        card.aside = {texts.text(isSeries ? "showSeriesAgain" : "showAgain"),
                      [show = actions.showAgain, event] { show(*event); }, true};
    } else {
        card.aside = {event->isRecurring ? texts.text("hideOneOrAll")
                                         : L10n::EventCustomization::excludeEvent(environment),
                      [hide = actions.hide, event] { hide(*event); }, true};
    }
}

void addSnoozes(platform::Card& card, const CoreServices& core, const EventRef& event, bool isInFuture,
                const EventCardActions& actions) {
    const platform::Environment& environment = *core.environment();
    card.menuLabel = L10n::Alert::snooze(environment);
    for (const std::int64_t minutes : snoozeTimes(core.settings())) {
        card.menu.push_back({minutes == 1 ? L10n::Alert::_1minute(environment)
                                          : L10n::Alert::customMinutes(environment, minutes),
                             [snooze = actions.snooze, event, minutes] { snooze(*event, minutes); }});
    }
    if (isInFuture) {
        card.menu.push_back({L10n::Alert::snoozeUntilEvent(environment),
                             [snooze = actions.snoozeUntilEvent, event] { snooze(*event); }});
    }
}

}  // namespace

HiddenPart hiddenPart(const CoreServices& core, const Event& event) {
    const auto settings = core.eventSettings().customSettings(event.id);
    if (settings && settings->isExcluded) return HiddenPart::all;
    const auto hidden = core.hiddenOccurrences().of(event.id);
    if (hidden.all().empty()) return HiddenPart::none;
    const auto occurrence = occurrenceOf(core, event);
    return occurrence && hidden.all().contains(*occurrence) ? HiddenPart::occurrence : HiddenPart::none;
}

std::vector<std::int64_t> snoozeTimes(const UserSettingsStore& settings) {
    std::vector<std::int64_t> times = {settings.defaultSnooze1(), settings.defaultSnooze2()};
    const auto custom = settings.customSnoozeTimes();
    times.insert(times.end(), custom.begin(), custom.end());
    std::erase_if(times, [](std::int64_t minutes) { return minutes <= 0; });
    std::ranges::sort(times);
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

platform::Card eventCard(const CoreServices& core, const CardTexts& texts, const Event& event,
                         const EventCardActions& actions) {
    const platform::Environment& environment = *core.environment();
    // One copy for all buttons.
    const auto kept = std::make_shared<const Event>(event);
    const Formatters& formatters = core.formatters();
    platform::ChangeMoments changes;
    const platform::ClockReading clock(core.environment()->now(), &changes);
    platform::Card card;
    card.color = event.color;
    card.title = titleOrUntitled(event, environment);
    const bool isPast = isOver(event, clock);
    const bool offersCall = !event.videoConferenceLinks.empty() && !isPast;
    const HiddenPart hidden = hiddenPart(core, event);
    for (std::string& line :
         std::vector<std::string>{texts.times(event, clock), texts.distance(event, clock)}) {
        if (!line.empty()) card.lines.push_back(std::move(line));
    }
    if (hidden != HiddenPart::none) card.lines.push_back(texts.hidden(event, hidden));
    if (event.travelTime > 0) {
        if (const auto length = formatters.durationFormatter().string(event.travelTime))
            card.lines.push_back(L10n::General::travelTime(environment, *length));
    }
    if (event.calendarName) card.lines.push_back(*event.calendarName);
    card.place = withoutCalls(event.location.value_or(""), event, offersCall);
    if (event.notes)
        card.notes = withoutCalls(removingVideoCallAnnotation(*event.notes).value_or(""), event, offersCall);
    const auto people = withOrganizersOnce(core.contacts().participants(event));
    if (!people.empty()) card.peopleHeading = peopleHeading(environment, people.size());
    card.people = rowsOf(environment, people);

    if (offersCall) {
        card.primary = {L10n::Alert::VideoConferenceMenu::join(environment),
                        [join = actions.join, kept] { join(*kept); }};
    }
    if (event.type != Event::EventType::hbrReminder) addCalendarButtons(card, texts, kept, hidden, actions);
    card.changesAt = changes.earliest();
    if (isPast) return card;
    addSnoozes(card, core, kept, isInFuture(event, clock), actions);
    card.changesAt = changes.earliest();
    return card;
}

platform::Card callChoiceCard(const CardTexts& texts, const Event& event,
                              const std::vector<VideoConferenceLink>& links,
                              const EventCardActions& actions) {
    const platform::Environment& environment = texts.environment();
    const auto kept = std::make_shared<const Event>(event);
    std::unordered_map<std::string, std::size_t> ofService;
    for (const VideoConferenceLink& link : links)
        ++ofService[link.service.name];
    platform::Card card;
    card.color = event.color;
    card.title = titleOrUntitled(event, environment);
    card.lines = {L10n::VideoConferencePicker::title(environment)};
    for (const VideoConferenceLink& link : links) {
        if (card.buttons.size() == mostCalls) {
            card.lines.push_back(texts.text("moreCalls", {std::to_string(mostCalls)}));
            break;
        }
        card.buttons.push_back({callLabel(link, ofService[link.service.name] == 1),
                                [join = actions.joinLink, kept, link] { join(*kept, link); }});
    }
    return card;
}

platform::Card hidingQuestionCard(const CardTexts& texts, const Event& event, std::function<void()> hideOne,
                                  std::function<void()> hideAll, std::function<void()> cancel) {
    const platform::Environment& environment = texts.environment();
    platform::Card card;
    card.color = event.color;
    card.title = titleOrUntitled(event, environment);
    card.lines = {texts.text(hideOne ? "askOneOrAll" : "askSeries")};
    card.buttons = {{L10n::General::cancel(environment), std::move(cancel), true}};
    if (hideOne) card.buttons.push_back({texts.text("hideOne"), std::move(hideOne), true});
    card.buttons.push_back({texts.text("hideAll"), std::move(hideAll), true});
    return card;
}

platform::Card hiddenCard(const CoreServices& core, const CardTexts& texts, const Event& event,
                          HiddenPart part, std::function<void()> undo) {
    const platform::Environment& environment = texts.environment();
    platform::Card card;
    card.color = event.color;
    card.title = titleOrUntitled(event, environment);
    card.lines = {texts.hidden(event, part)};
    const platform::Date now = core.environment()->now();
    // One occurrence leaves every list at once; a series stays there while it is under way.
    if (part == HiddenPart::all && isCurrentEvent(event, now) && !isAnyReminder(event)) {
        const Formatters& formatters = core.formatters();
        const bool endsToday = core.environment()->calendar.isSameDay(event.endDate, now);
        card.lines.push_back(texts.text(
            "underWay", {endsToday ? formatters.timeOnly().string(event.endDate)
                                   : formatters.timeAndDateFormatter().string(event.endDate, now)}));
    }
    card.buttons = {{texts.text("undo"), std::move(undo), true}, {L10n::General::ok(environment), [] {}}};
    return card;
}

platform::Card notHiddenCard(const CardTexts& texts, const Event& event, bool isGone) {
    const platform::Environment& environment = texts.environment();
    platform::Card card = messageCard(environment, titleOrUntitled(event, environment),
                                      texts.text(isGone ? "gone" : "notStored"));
    card.color = event.color;
    return card;
}

platform::Card messageCard(const platform::Environment& environment, std::string title, std::string text) {
    platform::Card card;
    card.title = std::move(title);
    card.lines = {std::move(text)};
    card.buttons.push_back({L10n::General::ok(environment), [] {}});
    return card;
}

}  // namespace hbr
