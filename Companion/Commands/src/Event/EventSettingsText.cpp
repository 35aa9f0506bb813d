#include "Event/EventSettingsText.h"

#include "Alerts/ReminderText.h"
#include "Event/EventExplanations.h"
#include "Event/ExplanationText.h"

#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <Words/LeadText.h>
#include <Words/OneLine.h>
#include <Words/ReasonText.h>
#include <Words/TextColumns.h>

#include <HbrCore/Events/EventJson.h>
#include <HbrCore/Events/EventLookup.h>
#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrCore/Scheduling/AlertSchedule.h>
#include <algorithm>

namespace hbr {

namespace {

class SettingsWriter {
  public:
    SettingsWriter(CommandContext& context, const Event& event)
        : context_(context),
          environment_(*context.environment()),
          event_(event),
          formatters_(context.core().formatters()),
          settings_(AlertSettings::of(context.core().settings())),
          own_(context.core().eventSettings().customSettings(event.id)),
          hidden_(context.core().hiddenOccurrences().of(event.id)),
          occurrence_(hidden_.all().empty() ? std::nullopt : occurrenceOf(context.core(), event)),
          now_(context.now()) {}

    std::string text() const {
        const std::vector<std::pair<std::string, std::string>> lines = {
            {word("EventSettings.leftOut"), excluded()},
            {word("EventSettings.alert"), isExcluded() || isHidden() ? "" : alert()},
            {word("EventSettings.call"), call()}};
        std::size_t width = 0;
        for (const auto& [name, value] : lines)
            width = std::max(width, columns(name) + 2);
        std::string text = context_.console().bold(titleOf(event_, environment_)) + "\n" +
                           formattedStartTimeAndDate(event_, formatters_, now_) +
                           context_.console().faint("  " + event_.id) + "\n";
        for (const auto& [name, value] : lines) {
            if (!value.empty()) text += "  " + padded(name, width) + value + "\n";
        }
        if (own_ && event_.isRecurring) text += word("EventSettings.wholeSeries") + "\n";
        if (!hidden_.all().empty()) text += word("EventSettings.hidden") + "\n";
        for (const Occurrence& one : hidden_.all())
            text += "    " + exactMoment(one.originalStart, environment_) + "\n";
        return text;
    }

    std::optional<platform::Date> alertMoment() const {
        if (const auto reminder = ownReminder()) {
            const auto alert =
                reminder->date().addingTimeInterval(-static_cast<double>(reminder->timeOffsetSeconds()));
            return alert > now_ ? std::optional(alert) : std::nullopt;
        }
        return alertDate(event_, settings_, own_, now_);
    }

    platform::JsonValue json() const {
        auto object = platform::JsonValue::object();
        object.set("event", eventJson(event_));
        if (own_) object.set("settings", JsonCoding<EventSettings>::encode(*own_));
        if (!hidden_.all().empty()) {
            auto starts = platform::JsonValue::array();
            for (const Occurrence& one : hidden_.all())
                starts.append(platform::formatRfc3339(one.originalStart));
            object.set("hiddenOccurrences", std::move(starts));
        }
        if (const auto alert = isHidden() ? std::nullopt : alertMoment())
            object.set("alertDate", platform::formatRfc3339(*alert));
        if (const auto link = defaultVideoConferenceLink(event_, own_))
            object.set("defaultConferenceUrl", link->url.absoluteString());
        return object;
    }

  private:
    std::string word(std::string_view key, std::initializer_list<L10n::FormatArgument> arguments = {}) const {
        return companionText(environment_, key, arguments);
    }

    bool isExcluded() const { return own_ && own_->isExcluded; }
    bool isHidden() const { return occurrence_ && hidden_.all().contains(*occurrence_); }

    std::optional<Reminder> ownReminder() const {
        if (event_.type != Event::EventType::hbrReminder) return std::nullopt;
        return context_.core().reminders().reminder(event_.id);
    }

    std::string excluded() const {
        if (isExcluded()) return word("EventSettings.leftOut.yes");
        return word(isHidden() ? "EventSettings.leftOut.one" : "EventSettings.leftOut.no");
    }

    /// How long before the start, and where that is set.
    std::string lead() const {
        if (const auto reminder = ownReminder()) {
            return word("EventSettings.lead.reminder",
                        {leadText(reminder->timeOffsetSeconds(), environment_)});
        }
        if (own_ && own_->usesCustomTimeOffset) {
            return word("EventSettings.lead.chosen", {leadText(own_->timeOffsetSeconds, environment_)});
        }
        return word("EventSettings.lead.default", {leadText(settings_.timeOffsetSeconds, environment_)});
    }

    std::string alert() const {
        std::string text = lead();
        const bool countsTravel = settings_.includeTravelTime && event_.travelTime > 0 && !ownReminder();
        if (countsTravel) {
            const auto travel = formatters_.durationFormatter().string(event_.travelTime).value_or("");
            text += ", " + word("EventSettings.travelTime", {travel});
        }
        const auto moment = alertMoment();
        if (!moment) return text + ": " + word("EventSettings.past");
        const std::string when = formatters_.timeAndDateFormatter().string(*moment, now_);
        const std::string cause = causeOfNone(*moment);
        if (cause.empty()) return text + ": " + when;
        return text + ": " + word("EventSettings.notPlanned", {when, cause, event_.id});
    }

    /// Why no alert is planned at that moment; empty when one is. The event may be declined, all-day, beyond
    /// the days shown and so on.
    std::string causeOfNone(platform::Date moment) const {
        const auto explanation = explanationOf(context_, event_);
        if (!explanation) return word("EventSettings.inNoCalendar");
        if (explanation->alertDate == moment) return {};
        if (explanation->isShown()) return word("EventSettings.listedAlready");
        return reasonText(mainCause(*explanation).reason, formatters_, now_);
    }

    std::string call() const {
        const auto& links = event_.videoConferenceLinks;
        if (links.empty()) return word("EventSettings.call.absent");
        const auto chosen = defaultVideoConferenceLink(event_, own_);
        std::string text;
        if (chosen) {
            text = onOneLine(chosen->service.name) + " " + chosen->url.absoluteString() + ", " +
                   word(links.size() == 1 ? "EventSettings.call.only" : "EventSettings.call.chosen");
        } else {
            text = word(own_ && own_->defaultConferenceUrl ? "EventSettings.call.gone"
                                                           : "EventSettings.call.notChosen");
        }
        if (links.size() == 1) return text;
        for (std::size_t i = 0; i < links.size(); ++i) {
            text += "\n    " + std::to_string(i + 1) + ". " + onOneLine(links[i].service.name) + " " +
                    links[i].url.absoluteString();
        }
        return text;
    }

    CommandContext& context_;
    const platform::Environment& environment_;
    const Event& event_;
    const Formatters& formatters_;
    AlertSettings settings_;
    std::optional<EventSettings> own_;
    /// Those of its series.
    HiddenOccurrences hidden_;
    std::optional<Occurrence> occurrence_;
    platform::Date now_;
};

}  // namespace

std::string eventSettingsText(CommandContext& context, const Event& event) {
    return SettingsWriter(context, event).text();
}

platform::JsonValue eventSettingsJson(CommandContext& context, const Event& event) {
    return SettingsWriter(context, event).json();
}

}  // namespace hbr
