#include "CardTexts.h"

#include "AlertMessage.h"

#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>
#include <HbrLocalization/PrintfFormat.h>
#include <HbrUtils/DateOperations.h>
#include <HbrUtils/DistanceTexts.h>
#include <TimeAndText/Text.h>

#include <vector>

namespace hbr {

std::string CardTexts::text(std::string_view key, std::initializer_list<std::string_view> arguments) const {
    const std::vector<L10n::FormatArgument> values(arguments.begin(), arguments.end());
    return formattedText(bundle_.localizedText("Widget.desktop.card." + std::string(key)), values,
                         core_.environment()->locale);
}

std::string CardTexts::sentence(std::string text) const {
    if (text.empty()) return text;
    text = platform::capitalizedFirstLetter(text, bundle_.language());
    return text.ends_with('.') ? text : text + ".";
}

std::string CardTexts::day(platform::Date date, const platform::ClockReading& clock) const {
    const platform::Calendar& calendar = core_.environment()->calendar;
    clock.notesNextDay(calendar);
    const platform::Date now = clock.now();
    if (isToday(date, calendar, now)) return L10n::TimeFormat::today(*core_.environment());
    if (isTomorrow(date, now, calendar)) return L10n::TimeFormat::tomorrow(*core_.environment());
    const Formatters& formatters = core_.formatters();
    return formatters.weekDay().string(date) + ", " + formatters.dateOnly().string(date);
}

std::string CardTexts::times(const Event& event, const platform::ClockReading& clock) const {
    const auto& time = core_.formatters().timeOnly();
    const std::string start = time.string(event.startDate);
    if (isAnyReminder(event)) return sentence(text("at", {day(event.startDate, clock), start}));
    const std::string end = time.string(event.endDate);
    if (core_.environment()->calendar.isSameDay(event.startDate, event.endDate))
        return sentence(text("fromTo", {day(event.startDate, clock), start, end}));
    return sentence(text("fromToDays", {day(event.startDate, clock), start, day(event.endDate, clock), end}));
}

std::string CardTexts::distance(const Event& event, const platform::ClockReading& clock) const {
    const Formatters& formatters = core_.formatters();
    if (isOver(event, clock)) return sentence(text("over", {relativeText(event.endDate, clock, formatters)}));
    if (isCurrentEvent(event, clock) && !isAnyReminder(event))
        return sentence(timeRemainingText(event.endDate, clock, formatters).value_or(""));
    return sentence(relativeText(event.startDate, clock, formatters));
}

std::string CardTexts::hidden(const Event& event, HiddenPart part) const {
    if (part == HiddenPart::occurrence) return text("hiddenOne");
    return text(event.isRecurring ? "hiddenSeries" : "hidden");
}

}  // namespace hbr
