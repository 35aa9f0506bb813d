#include "EventSettingsText.h"

#include "EventExplanations.h"
#include "ExplanationText.h"
#include "LeadText.h"

#include <HbrCore/Events/EventJson.h>
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
          event_(event),
          formatters_(context.core().formatters()),
          settings_(AlertSettings::of(context.core().settings())),
          own_(context.core().eventSettings().customSettings(event.id)),
          now_(context.now()) {}

    std::string text() const {
        const std::string title = onOneLine(event_.title.value_or(""));
        std::string text = context_.console().bold(title.empty() ? "(no title)" : title) + "\n" +
                           formattedStartTimeAndDate(event_, formatters_, now_) +
                           context_.console().faint("  " + event_.id) + "\n";
        text += line("left out", excluded());
        if (!isExcluded()) text += line("alert", alert());
        text += line("call", call());
        if (own_ && event_.isRecurring) text += "These settings hold for the whole series.\n";
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
        if (const auto alert = alertMoment()) object.set("alertDate", platform::formatRfc3339(*alert));
        if (const auto link = defaultVideoConferenceLink(event_, own_))
            object.set("defaultConferenceUrl", link->url.absoluteString());
        return object;
    }

  private:
    static std::string line(const std::string& name, const std::string& text) {
        return "  " + padded(name, 10) + text + "\n";
    }

    bool isExcluded() const { return own_ && own_->isExcluded; }

    std::optional<Reminder> ownReminder() const {
        if (event_.type != Event::EventType::hbrReminder) return std::nullopt;
        return context_.core().reminders().reminder(event_.id);
    }

    std::string excluded() const {
        if (!isExcluded()) return "no";
        return "yes, by your choice for it (to change it: --include)";
    }

    std::string alert() const {
        std::string text;
        if (const auto reminder = ownReminder()) {
            text =
                leadText(reminder->timeOffsetSeconds(), *context_.environment()) + ", as the reminder says";
        } else if (own_ && own_->usesCustomTimeOffset) {
            text = leadText(own_->timeOffsetSeconds, *context_.environment()) + ", by your choice for it";
        } else {
            text = leadText(settings_.timeOffsetSeconds, *context_.environment()) +
                   ", as for every event (timeOffsetSeconds)";
        }
        const bool countsTravel = settings_.includeTravelTime && event_.travelTime > 0 && !ownReminder();
        if (countsTravel) {
            const auto travel = formatters_.durationFormatter().string(event_.travelTime);
            text += ", earlier by the travel time of " + travel.value_or("");
        }
        const auto moment = alertMoment();
        if (!moment) return text + ": past";
        const std::string when = formatters_.timeAndDateFormatter().string(*moment, now_);
        const std::string cause = causeOfNone(*moment);
        if (cause.empty()) return text + ": " + when;
        return text + ": would be " + when + ", but none is planned: " + cause + " (see: heedbanner why " +
               event_.id + ")";
    }

    /// Why no alert is planned at that moment; empty when one is. The event may be declined, all-day, beyond
    /// the days that are looked at and so on.
    std::string causeOfNone(platform::Date moment) const {
        const auto explanation = explanationOf(context_, event_);
        if (!explanation) return "it is in none of your calendars";
        if (explanation->alertDate == moment) return {};
        if (explanation->isShown()) return "it is listed already";
        return onOneLine(mainCause(*explanation).detail);
    }

    std::string call() const {
        const auto& links = event_.videoConferenceLinks;
        if (links.empty()) return "none";
        const auto chosen = defaultVideoConferenceLink(event_, own_);
        std::string text;
        if (chosen) {
            text = onOneLine(chosen->service.name) + " " + chosen->url.absoluteString() +
                   (links.size() == 1 ? ", the only one" : ", by your choice for it");
        } else {
            text = own_ && own_->defaultConferenceUrl ? "the one that you chose is no longer in the event"
                                                      : "none is chosen";
            text += " (to choose one: --link)";
        }
        if (links.size() == 1) return text;
        for (std::size_t i = 0; i < links.size(); ++i) {
            text += "\n    " + std::to_string(i + 1) + ". " + onOneLine(links[i].service.name) + " " +
                    links[i].url.absoluteString();
        }
        return text;
    }

    CommandContext& context_;
    const Event& event_;
    const Formatters& formatters_;
    AlertSettings settings_;
    std::optional<EventSettings> own_;
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
