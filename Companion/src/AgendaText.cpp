#include "AgendaText.h"

#include <Foundation/Text.h>
#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>

#include <algorithm>
#include <string>

namespace hbr {

namespace {

constexpr platform::Color orange = platform::Color::hex(0xE16C10);

class AgendaWriter {
  public:
    AgendaWriter(CommandContext& context, const std::vector<AgendaEvent>& agenda, bool withIds)
        : console_(context.console()),
          core_(context.core()),
          formatters_(core_.formatters()),
          now_(context.now()),
          withIds_(withIds) {
        for (const auto& one : agenda)
            timeWidth_ = std::max(timeWidth_, columns(timeSpan(one.event, formatters_)));
    }

    std::string text(const std::vector<AgendaEvent>& agenda) {
        std::string day;
        for (const auto& one : agenda) {
            const std::string heading = headingOf(one);
            if (heading != day) {
                text_ += (day.empty() ? "" : "\n") + console_.bold(heading) + "\n";
                day = heading;
            }
            addEvent(one);
        }
        return text_;
    }

  private:
    std::string headingOf(const AgendaEvent& one) const {
        if (one.state == AgendaState::current) return "Under way";
        return dayHeading(one.event.startDate, now_, formatters_);
    }

    /// What is under way or about to begin stands out, also without colours.
    std::string marker(AgendaState state) const {
        switch (state) {
            case AgendaState::current:
                return console_.colored("▶", orange);
            case AgendaState::pending:
                return console_.colored("!", orange);
            case AgendaState::upcoming:
                break;
        }
        return " ";
    }

    std::string distance(const AgendaEvent& one) const {
        if (one.state == AgendaState::current) {
            const auto left = formatters_.timeRemaining(timeLeft(one.event, now_));
            return left.value_or("");
        }
        constexpr double soon = 3 * 3600;
        if (one.event.startDate.timeIntervalSince(now_) > soon) return "";
        return formatters_.relativeDefault().string(one.event.startDate, now_);
    }

    void addEvent(const AgendaEvent& one) {
        const Event& event = one.event;
        const std::string title = onOneLine(event.title.value_or(""));
        text_ += marker(one.state) + " " + padded(timeSpan(event, formatters_), timeWidth_) + " " +
                 console_.colored("▌", event.color) + " " + (title.empty() ? "(no title)" : title);
        std::string details;
        const auto add = [&](const std::string& detail) {
            if (!detail.empty()) details += "  " + detail;
        };
        add(distance(one));
        add(event.location ? shortPlace(*event.location) : "");
        add(event.calendarName ? "[" + onOneLine(*event.calendarName) + "]" : "");
        if (withIds_) add(event.id);
        text_ += console_.faint(details) + "\n";
        addLinks(event);
    }

    /// A place that is an address of a call is shown as the link already.
    static std::string shortPlace(const std::string& location) {
        const std::string place = onOneLine(location);
        return place.find("://") == std::string::npos ? place : "";
    }

    void addLinks(const Event& event) {
        const auto chosen = defaultVideoConferenceLink(event, core_.eventSettings().customSettings(event.id));
        for (const auto& link : event.videoConferenceLinks) {
            if (chosen && link.url != chosen->url) continue;
            text_ += std::string(timeWidth_ + 3, ' ') + console_.colored("▌", event.color) + " " +
                     console_.faint(link.service.name + " " + link.url.absoluteString()) + "\n";
        }
    }

    const Console& console_;
    CoreServices& core_;
    const Formatters& formatters_;
    platform::Date now_;
    bool withIds_;
    std::size_t timeWidth_ = 0;
    std::string text_;
};

}  // namespace

std::string dayHeading(platform::Date day, platform::Date now, const Formatters& formatters) {
    const std::string date = formatters.dateOnlyNoYearWeekDay().string(day);
    switch (formatters.environment().calendar.daysBetween(now, day)) {
        case 0:
            return "Today, " + date;
        case 1:
            return "Tomorrow, " + date;
        default:
            return date;
    }
}

std::string timeSpan(const Event& event, const Formatters& formatters) {
    if (isAnyReminder(event)) return formattedStartTime(event, formatters);
    // An end on a later day says by how many; midnight still belongs to the evening before it.
    const platform::Calendar& calendar = formatters.environment().calendar;
    const platform::Date end = event.endDate;
    int days = calendar.daysBetween(event.startDate, end);
    if (end == calendar.startOfDay(end)) --days;
    return formattedTime(event, formatters) + (days > 0 ? " +" + std::to_string(days) : "");
}

std::string agendaText(CommandContext& context, const std::vector<AgendaEvent>& agenda, bool withIds) {
    return AgendaWriter(context, agenda, withIds).text(agenda);
}

}  // namespace hbr
