#include <Words/LeadText.h>

#include <HbrLocalization/L10n.h>
#include <Words/CompanionText.h>

namespace hbr {

std::string leadText(std::int64_t seconds, const platform::Environment& environment) {
    if (seconds == 0) return companionText(environment, "Alerts.atStart");
    std::string lead;
    const auto add = [&](const std::string& amount) {
        lead = lead.empty() ? amount : L10n::Amount::joined(environment, lead, amount);
    };
    if (const auto hours = seconds / 3600; hours != 0) add(L10n::Amount::hours(environment, hours));
    if (const auto minutes = seconds % 3600 / 60; minutes != 0)
        add(L10n::Amount::minutes(environment, minutes));
    if (const auto rest = seconds % 60; rest != 0) add(L10n::Amount::seconds(environment, rest));
    return companionText(environment, "Alerts.beforeStart", {lead});
}

}  // namespace hbr
