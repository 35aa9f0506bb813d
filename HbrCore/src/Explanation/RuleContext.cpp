#include "RuleContext.h"

#include <utility>

namespace hbr {

namespace {

std::set<std::string> setOf(const std::vector<std::string>& texts) {
    return {texts.begin(), texts.end()};
}

}  // namespace

RuleContext::RuleContext(const CoreServices& services, std::set<std::string> decidedIdentifiers)
    : core(services),
      calendar(services.environment()->calendar),
      formatters(services.formatters()),
      now(services.environment()->now()),
      settings(services.manager().reloadSettings()),
      window(settings->window(calendar, now)),
      alertSettings(settings->alerts),
      attendance(settings->attendance()),
      rules(settings->excludeRules),
      matcher(rules, calendar),
      schedule(alertSettings, settings->eventSettings, services.parser(), calendar, now),
      watchedCalendars(setOf(services.settings().activeCalendarIdentifiers())),
      watchedLists(setOf(services.settings().activeReminderListIdentifiers())),
      decided(std::move(decidedIdentifiers)) {}

std::string RuleContext::moment(platform::Date date) const {
    if (calendar.isSameDay(date, now)) return formatters.timeOnly().string(date);
    return formatters.timeAndDateFormatter().string(date, now);
}

std::string RuleContext::when(platform::Date date) const {
    return (calendar.isSameDay(date, now) ? "at " : "") + moment(date);
}

std::string RuleContext::duration(double seconds) const {
    return formatters.durationFormatter().string(seconds).value_or("");
}

std::string countedDays(std::int64_t count) {
    return std::to_string(count) + (count == 1 ? " day" : " days");
}

}  // namespace hbr
