#include "EventCard.h"

#include "AlertMessage.h"

#include <HbrCore/Events/EventLookup.h>
#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>
#include <HbrUtils/Truncation.h>
#include <TimeAndText/Text.h>

#include <algorithm>
#include <optional>
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
    std::string rest;
    for (const std::string& line : platform::split(text, "\n")) {
        const std::string content = platform::trimmed(line);
        const bool isCall =
            offersCall && std::ranges::any_of(event.videoConferenceLinks, [&](const auto& link) {
                return link.url.absoluteString() == content;
            });
        if (!isCall) rest += line + "\n";
    }
    return platform::trimmed(rest);
}

/// In the event's order; the organizer, who often stands among the attendees too, once.
std::vector<platform::Card::Person> peopleOf(const CoreServices& core, const Event& event) {
    std::vector<platform::Card::Person> people;
    std::vector<Participant> shown;
    for (Participant& one : core.contacts().participants(event)) {
        const bool isShown = std::ranges::any_of(
            shown, [&](const Participant& other) { return other.isOrganizer && other == one; });
        if (isShown) continue;
        people.push_back({.name = one.displayName(),
                          .remark = remarkOf(*core.environment(), one),
                          .initials = one.initials(),
                          .picture = one.image});
        shown.push_back(std::move(one));
    }
    return people;
}

/// The service, and where several are of the same one, what of the link tells them apart.
std::string callLabel(const VideoConferenceLink& link, const std::vector<VideoConferenceLink>& links) {
    const auto isSameService = [&](const VideoConferenceLink& other) {
        return other.service.name == link.service.name;
    };
    if (std::ranges::count_if(links, isSameService) < 2) return link.service.name;
    constexpr int longest = 40;
    std::string address = link.url.absoluteString();
    if (const auto scheme = address.find("://"); scheme != std::string::npos) address.erase(0, scheme + 3);
    return link.service.name + ": " + truncated(address, longest, "…");
}

/// Rows of participants in a card; the others are counted in one row more.
constexpr std::size_t mostPeople = 50;

std::string peopleHeading(const platform::Environment& environment, std::size_t count) {
    const auto number = static_cast<std::int64_t>(count);
    return count == 1 ? L10n::Alert::Participants::participant(environment, number)
                      : L10n::Alert::Participants::participants(environment, number);
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
    card.people = peopleOf(core, event);
    if (!card.people.empty()) card.peopleHeading = peopleHeading(environment, card.people.size());
    if (card.people.size() > mostPeople) {
        const auto more = static_cast<std::int64_t>(card.people.size() - mostPeople);
        card.people.resize(mostPeople);
        card.people.emplace_back().name = L10n::Alert::participantsOverflowToolTip(environment, more);
    }

    if (offersCall) {
        card.primary = {L10n::Alert::VideoConferenceMenu::join(environment),
                        [join = actions.join, event] { join(event); }};
    }
    if (event.type != Event::EventType::hbrReminder) {
        card.buttons.push_back({L10n::Alert::showInCalendarTooltip(environment),
                                [show = actions.showInCalendar, event] { show(event); }});
        if (hidden != HiddenPart::none) {
            const bool isSeries = event.isRecurring && hidden == HiddenPart::all;
            card.aside = {texts.text(isSeries ? "showSeriesAgain" : "showAgain"),
                          [show = actions.showAgain, event] { show(event); }, true};
        } else {
            card.aside = {event.isRecurring ? texts.text("hideOneOrAll")
                                            : L10n::EventCustomization::excludeEvent(environment),
                          [hide = actions.hide, event] { hide(event); }, true};
        }
    }
    card.changesAt = changes.earliest();
    if (isPast) return card;
    card.menuLabel = L10n::Alert::snooze(environment);
    for (const std::int64_t minutes : snoozeTimes(core.settings())) {
        card.menu.push_back({minutes == 1 ? L10n::Alert::_1minute(environment)
                                          : L10n::Alert::customMinutes(environment, minutes),
                             [snooze = actions.snooze, event, minutes] { snooze(event, minutes); }});
    }
    if (isInFuture(event, clock)) {
        card.menu.push_back({L10n::Alert::snoozeUntilEvent(environment),
                             [snooze = actions.snoozeUntilEvent, event] { snooze(event); }});
    }
    card.changesAt = changes.earliest();
    return card;
}

platform::Card callChoiceCard(const platform::Environment& environment, const Event& event,
                              const std::vector<VideoConferenceLink>& links,
                              const EventCardActions& actions) {
    platform::Card card;
    card.color = event.color;
    card.title = titleOrUntitled(event, environment);
    card.lines = {L10n::VideoConferencePicker::title(environment)};
    for (const VideoConferenceLink& link : links) {
        card.buttons.push_back(
            {callLabel(link, links), [join = actions.joinLink, event, link] { join(event, link); }});
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
