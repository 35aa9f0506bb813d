#include "EventCard.h"

#include <Foundation/Text.h>
#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>
#include <HbrUtils/DistanceTexts.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace hbr {

namespace {

std::string titleOf(const Event& event) {
    return event.title && !event.title->empty() ? *event.title : L10n::General::untitled();
}

std::string remarkOf(const Participant& participant) {
    switch (participant.status) {
        case ParticipantStatus::accepted:
            return L10n::Alert::Participants::Status::accepted();
        case ParticipantStatus::tentative:
            return L10n::Alert::Participants::Status::tentative();
        case ParticipantStatus::declined:
            return L10n::Alert::Participants::Status::declined();
        case ParticipantStatus::pending:
            return L10n::Alert::Participants::Status::pending();
        case ParticipantStatus::unknown:
            break;
    }
    return {};
}

std::string whenLine(const Event& event, const Formatters& formatters, const platform::ClockReading& clock) {
    if (isAnyReminder(event)) return formattedStartTimeAndDate(event, formatters, clock);
    std::string when = formattedTimeAndDate(event, formatters, clock);
    if (!isCurrentEvent(event, clock)) return when;
    // Of an event under way that text names the end only.
    return formattedStartTimeAndDate(event, formatters, clock) + ", " + when;
}

std::string howLongLine(const Event& event, const Formatters& formatters,
                        const platform::ClockReading& clock) {
    if (isCurrentEvent(event, clock) && !isAnyReminder(event))
        return timeRemainingText(event.endDate, clock, formatters).value_or("");
    return relativeText(event.startDate, clock, formatters);
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
                          .remark = remarkOf(one),
                          .initials = one.initials(),
                          .picture = one.image});
        shown.push_back(std::move(one));
    }
    return people;
}

std::string peopleHeading(std::size_t count) {
    const auto number = static_cast<std::int64_t>(count);
    return count == 1 ? L10n::Alert::Participants::participant(number)
                      : L10n::Alert::Participants::participants(number);
}

}  // namespace

std::vector<std::int64_t> snoozeTimes(const UserSettingsStore& settings) {
    std::vector<std::int64_t> times = {settings.defaultSnooze1(), settings.defaultSnooze2()};
    const auto custom = settings.customSnoozeTimes();
    times.insert(times.end(), custom.begin(), custom.end());
    std::erase_if(times, [](std::int64_t minutes) { return minutes <= 0; });
    std::ranges::sort(times);
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

platform::Card eventCard(const CoreServices& core, const Event& event, const EventCardActions& actions) {
    const Formatters& formatters = core.formatters();
    platform::ChangeMoments changes;
    const platform::ClockReading clock(core.environment()->now(), &changes);
    platform::Card card;
    card.color = event.color;
    card.title = titleOf(event);
    for (std::string& line : std::vector<std::string>{whenLine(event, formatters, clock),
                                                      howLongLine(event, formatters, clock)}) {
        if (!line.empty()) card.lines.push_back(std::move(line));
    }
    if (event.travelTime > 0) {
        if (const auto length = formatters.durationFormatter().string(event.travelTime))
            card.lines.push_back(L10n::General::travelTime(*length));
    }
    if (event.calendarName) card.lines.push_back(*event.calendarName);
    card.place = platform::trimmed(event.location.value_or(""));
    if (event.notes) card.notes = platform::trimmed(removingVideoCallAnnotation(*event.notes).value_or(""));
    card.people = peopleOf(core, event);
    if (!card.people.empty()) card.peopleHeading = peopleHeading(card.people.size());

    if (!event.videoConferenceLinks.empty()) {
        card.primary = {L10n::Alert::VideoConferenceMenu::join(),
                        [join = actions.join, event] { join(event); }};
    }
    if (event.type != Event::EventType::hbrReminder) {
        card.buttons.push_back(
            {L10n::Alert::showInCalendarTooltip(), [show = actions.showInCalendar, event] { show(event); }});
        card.aside = {L10n::EventCustomization::excludeEvent(),
                      [leaveOut = actions.leaveOut, event] { leaveOut(event); }};
    }
    card.menuLabel = L10n::Alert::snooze();
    for (const std::int64_t minutes : snoozeTimes(core.settings())) {
        card.menu.push_back({minutes == 1 ? L10n::Alert::_1minute() : L10n::Alert::customMinutes(minutes),
                             [snooze = actions.snooze, event, minutes] { snooze(event, minutes); }});
    }
    if (isInFuture(event, clock)) {
        card.menu.push_back(
            {L10n::Alert::snoozeUntilEvent(), [snooze = actions.snoozeUntilEvent, event] { snooze(event); }});
    }
    card.changesAt = changes.earliest();
    return card;
}

platform::Card callChoiceCard(const Event& event, const std::vector<VideoConferenceLink>& links,
                              const EventCardActions& actions) {
    platform::Card card;
    card.color = event.color;
    card.title = titleOf(event);
    card.lines = {L10n::VideoConferencePicker::title()};
    for (const VideoConferenceLink& link : links) {
        card.place += (card.place.empty() ? "" : "\n") + link.service.name + ": " + link.url.absoluteString();
        card.buttons.push_back(
            {link.service.name, [join = actions.joinLink, event, link] { join(event, link); }});
    }
    return card;
}

platform::Card messageCard(std::string title, std::string text) {
    platform::Card card;
    card.title = std::move(title);
    card.lines = {std::move(text)};
    card.buttons.push_back({L10n::General::ok(), [] {}});
    return card;
}

}  // namespace hbr
