#include "Agenda/AgendaText.h"

#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <Words/OneLine.h>
#include <Words/TextColumns.h>

#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <algorithm>
#include <optional>
#include <string>

namespace hbr {

namespace {

constexpr platform::Color orange = platform::Color::hex(0xE16C10);

/// Longer lines are hard to read.
constexpr int widest = 100;
constexpr int narrowest = 40;

class AgendaWriter {
  public:
    AgendaWriter(CommandContext& context, const std::vector<AgendaEvent>& agenda, bool withIds)
        : console_(context.console()),
          core_(context.core()),
          formatters_(core_.formatters()),
          now_(context.now()),
          withIds_(withIds) {
        if (const auto width = console_.width()) {
            width_ = static_cast<std::size_t>(std::clamp(*width, narrowest, widest));
        }
        for (const auto& one : agenda)
            timeWidth_ = std::max(timeWidth_, columns(timeSpan(*one.event, formatters_)));
    }

    std::string text(const std::vector<AgendaEvent>& agenda) {
        std::string day;
        for (const auto& one : agenda) {
            const std::string heading = headingOf(one);
            if (heading != day) {
                text_ += (day.empty() ? "" : "\n") + console_.bold(heading) + "\n";
                day = heading;
            }
            width_ ? addEventOfWidth(one, *width_) : addEvent(one);
        }
        return text_;
    }

  private:
    std::string headingOf(const AgendaEvent& one) const {
        if (one.state == AgendaState::current)
            return companionText(formatters_.environment(), "Agenda.underWay");
        return dayHeading(one.event->startDate, now_, formatters_);
    }

    /// Marks events under way or about to begin, also without colours.
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
            const auto left = formatters_.timeRemaining(timeLeft(*one.event, now_));
            return left.value_or("");
        }
        constexpr double soon = 3 * 3600;
        if (one.event->startDate.timeIntervalSince(now_) > soon) return "";
        return formatters_.relativeDefault().string(one.event->startDate, now_);
    }

    /// The marker, the time and the calendar's colour in front of every line of an event.
    std::string margin(const AgendaEvent* one, const Event& event) const {
        return (one ? marker(one->state) + " " + padded(timeSpan(event, formatters_), timeWidth_)
                    : std::string(timeWidth_ + 2, ' ')) +
               " " + console_.colored("▌", event.color) + " ";
    }

    /// For pipes: everything, on lines of any length.
    void addEvent(const AgendaEvent& one) {
        const Event& event = *one.event;
        text_ += margin(&one, event) + titleOf(event, formatters_.environment());
        std::string details;
        const auto add = [&](const std::string& detail) {
            if (!detail.empty()) details += "  " + detail;
        };
        add(distance(one));
        add(placeOf(event));
        add(event.calendarName ? "[" + onOneLine(*event.calendarName) + "]" : "");
        if (withIds_) add(event.id);
        text_ += details + "\n";
        for (const auto* link : linksOf(event)) {
            text_ += margin(nullptr, event) + link->service.name + " " + link->url.absoluteString() + "\n";
        }
    }

    /// For a terminal: title and distance on one line, the rest on the next.
    void addEventOfWidth(const AgendaEvent& one, std::size_t width) {
        const Event& event = *one.event;
        const bool isCurrent = one.state == AgendaState::current;
        const bool standsOut = one.state != AgendaState::upcoming;
        const std::size_t room = width - std::min(width, timeWidth_ + 5);
        const std::string progress = isCurrent && room >= roomForProgress ? progressBar(event) : "";
        const std::string far = distance(one);
        const std::size_t taken = columns(far) + (progress.empty() ? 0 : progressCells + 1);
        const std::size_t titleRoom = room > taken + 2 ? room - taken - 2 : 0;
        const std::string title = truncatedToColumns(titleOf(event, formatters_.environment()), titleRoom);
        text_ += margin(&one, event) + (standsOut ? console_.bold(title) : title);
        if (!far.empty() || !progress.empty()) {
            text_ += std::string(titleRoom - columns(title) + 2, ' ') +
                     (standsOut ? console_.colored(far, orange) : console_.faint(far)) +
                     (progress.empty() ? "" : " " + progress);
        }
        text_ += "\n";
        if (const std::string details = detailsOfWidth(event, room); !details.empty()) {
            text_ += margin(nullptr, event) + details + "\n";
        }
        if (withIds_) text_ += margin(nullptr, event) + console_.faint(event.id) + "\n";
    }

    std::string progressBar(const Event& event) const {
        const auto done = static_cast<std::size_t>(eventProgress(event, now_) * progressCells);
        std::string bar;
        for (std::size_t i = 0; i < done; ++i)
            bar += "━";
        std::string rest;
        for (std::size_t i = done; i < progressCells; ++i)
            rest += "─";
        return console_.colored(bar, orange) + console_.faint(rest);
    }

    /// The calls first, because they are clicked. Cut off at the end of the line.
    std::string detailsOfWidth(const Event& event, std::size_t room) const {
        std::string details;
        const auto add = [&](const std::string& plain, const std::string& address) {
            const std::size_t separator = details.empty() ? 0 : 3;
            if (plain.empty() || room <= separator) return;
            const std::string shown = truncatedToColumns(plain, room - separator);
            room -= separator + columns(shown);
            if (separator > 0) details += console_.faint(" · ");
            details += address.empty() ? console_.faint(shown) : console_.linked(shown, address);
        };
        for (const auto* link : linksOf(event)) {
            const std::string address = link->url.absoluteString();
            console_.hasLinks() ? add(link->service.name, address)
                                : add(link->service.name + " " + address, "");
        }
        add(placeOf(event), "");
        add(onOneLine(event.calendarName.value_or("")), "");
        return details;
    }

    /// A place that is the address of a call is already shown as the link.
    static std::string placeOf(const Event& event) {
        const std::string place = onOneLine(event.location.value_or(""));
        return place.find("://") == std::string::npos ? place : "";
    }

    /// The chosen call, else all.
    std::vector<const VideoConferenceLink*> linksOf(const Event& event) const {
        const auto chosen = defaultVideoConferenceLink(event, core_.eventSettings().customSettings(event.id));
        std::vector<const VideoConferenceLink*> links;
        for (const auto& link : event.videoConferenceLinks) {
            if (!chosen || link.url == chosen->url) links.push_back(&link);
        }
        return links;
    }

    static constexpr std::size_t progressCells = 10;
    static constexpr std::size_t roomForProgress = 48;

    const Console& console_;
    CoreServices& core_;
    const Formatters& formatters_;
    platform::Date now_;
    bool withIds_;
    /// Columns of the terminal; none for a pipe.
    std::optional<std::size_t> width_;
    std::size_t timeWidth_ = 0;
    std::string text_;
};

}  // namespace

std::string dayHeading(platform::Date day, platform::Date now, const Formatters& formatters) {
    const std::string date = formatters.dateOnlyNoYearWeekDay().string(day);
    switch (formatters.environment().calendar.daysBetween(now, day)) {
        case 0:
            return companionText(formatters.environment(), "Day.today", {date});
        case 1:
            return companionText(formatters.environment(), "Day.tomorrow", {date});
        default:
            return date;
    }
}

std::string timeSpan(const Event& event, const Formatters& formatters) {
    if (isAnyReminder(event)) return formattedStartTime(event, formatters);
    // An end on a later day shows the number of days; midnight belongs to the day before it.
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
