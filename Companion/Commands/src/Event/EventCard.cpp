#include "Event/EventCard.h"

#include "Event/StoredEventTimes.h"

#include <HbrLocalization/L10n.h>
#include <TimeAndText/Text.h>
#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <Words/OneLine.h>
#include <Words/TextColumns.h>

#include <HbrCore/ConferenceLinks/VideoCallAnnotation.h>
#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>

namespace hbr {

namespace {

std::string_view answerKey(ParticipantStatus status) {
    switch (status) {
        case ParticipantStatus::accepted:
            return "Card.answer.accepted";
        case ParticipantStatus::tentative:
            return "Card.answer.tentative";
        case ParticipantStatus::declined:
            return "Card.answer.declined";
        case ParticipantStatus::pending:
            return "Card.answer.pending";
        case ParticipantStatus::unknown:
            break;
    }
    return "Card.answer.unknown";
}

class CardWriter {
  public:
    CardWriter(CommandContext& context, const Event& event)
        : console_(context.console()),
          core_(context.core()),
          formatters_(core_.formatters()),
          now_(context.now()),
          event_(event),
          stored_(storedOccurrence()) {}

    std::string text() {
        text_ = console_.colored("▌", event_.color) + " " +
                console_.bold(titleOf(event_, formatters_.environment())) + "\n";
        addTimes();
        if (event_.calendarName) add(word("Card.calendar"), {onOneLine(*event_.calendarName)});
        if (event_.location) add(word("Card.place"), lines(*event_.location));
        addCalls();
        addParticipants();
        if (event_.notes) {
            if (const auto notes = removingVideoCallAnnotation(*event_.notes))
                add(word("Card.notes"), lines(*notes));
        }
        add(word("Card.id"), {event_.id});
        return text_;
    }

  private:
    static constexpr std::size_t labelWidth = 14;

    std::string word(std::string_view key) const { return companionText(formatters_.environment(), key); }

    /// The calendar's own record of the event; nothing for reminders.
    platform::EKEventRef storedOccurrence() const {
        if (event_.type != Event::EventType::calendarEvent) return nullptr;
        for (const auto& one : core_.aggregatedEventStore().events(event_.startDate, event_.endDate)) {
            if (one->eventIdentifier == event_.id && one->startDate == event_.startDate) return one;
        }
        return nullptr;
    }

    /// Without blank lines at both ends.
    static std::vector<std::string> lines(const std::string& text) {
        std::vector<std::string> result;
        for (const auto& line : platform::split(platform::trimmed(text), "\n"))
            result.push_back(onOneLine(line));
        return result;
    }

    void add(std::string_view label, const std::vector<std::string>& values) {
        for (const auto& value : values) {
            const bool isFirst = &value == &values.front();
            if (value.empty() && (isFirst || values.size() == 1)) continue;
            if (!value.empty())
                text_ += "  " + console_.faint(padded(isFirst ? label : "", labelWidth)) + value;
            text_ += "\n";
        }
    }

    std::string times() const {
        if (stored_ && stored_->isAllDay) return storedEventTimes(*stored_, formatters_);
        if (isAnyReminder(event_)) return formattedStartTimeAndDate(event_, formatters_, now_);
        std::string text = formattedTimeAndDate(event_, formatters_, now_);
        if (!isCurrentEvent(event_, now_)) return text;
        // For an event under way, that text contains only the end.
        return formattedStartTimeAndDate(event_, formatters_, now_) + ", " + text;
    }

    void addTimes() {
        add(word("Card.when"), {times()});
        if (isCurrentEvent(event_, now_) && !isAnyReminder(event_)) {
            add("", {formatters_.timeRemaining(timeLeft(event_, now_)).value_or("")});
        } else if (!stored_ || !stored_->isAllDay) {
            add("", {formatters_.relativeDefault().string(event_.startDate, now_)});
        }
        if (event_.isRecurring) add("", {word("Card.repeats")});
        if (event_.travelTime > 0) {
            const auto length = formatters_.durationFormatter().string(event_.travelTime);
            if (length) add("", {L10n::General::travelTime(formatters_.environment(), *length)});
        }
        if (stored_ && stored_->status == platform::EKEventStatus::canceled)
            add(word("Card.status"), {word("Card.status.cancelled")});
        if (stored_ && stored_->status == platform::EKEventStatus::tentative)
            add(word("Card.status"), {word("Card.status.tentative")});
    }

    void addCalls() {
        std::vector<std::string> calls;
        for (const auto& link : event_.videoConferenceLinks)
            calls.push_back(link.service.name + "  " + onOneLine(link.url.absoluteString()));
        add(word(calls.size() > 1 ? "Card.calls" : "Card.call"), calls);
    }

    void addParticipants() {
        std::vector<std::string> people;
        for (const auto& one : withOrganizersOnce(core_.contacts().participants(event_))) {
            const std::string name = onOneLine(one.displayName(formatters_.environment()));
            std::string details = ", " + word(answerKey(one.status));
            if (one.email && *one.email != name) details += "  " + onOneLine(*one.email);
            people.push_back(name + console_.faint(details));
        }
        add(word(people.size() == 1 ? "Card.participant" : "Card.participants"), people);
    }

    const Console& console_;
    CoreServices& core_;
    const Formatters& formatters_;
    platform::Date now_;
    const Event& event_;
    platform::EKEventRef stored_;
    std::string text_;
};

}  // namespace

std::string eventCard(CommandContext& context, const Event& event) {
    return CardWriter(context, event).text();
}

}  // namespace hbr
