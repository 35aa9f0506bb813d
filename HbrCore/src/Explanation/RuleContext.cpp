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
      now(services.environment()->now()),
      settings(services.manager().reloadSettings()),
      window(settings->window(calendar, now)),
      alertSettings(settings->alerts),
      attendance(alertSettings.attendance()),
      rules(settings->excludeRules),
      matcher(rules, calendar),
      schedule(alertSettings, settings->eventSettings, services.parser(), calendar, now),
      watchedCalendars(setOf(services.settings().activeCalendarIdentifiers())),
      watchedLists(setOf(services.settings().activeReminderListIdentifiers())),
      decided(std::move(decidedIdentifiers)) {}

}  // namespace hbr
