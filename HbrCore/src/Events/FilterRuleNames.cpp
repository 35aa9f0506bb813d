#include <HbrCore/Events/FilterRuleNames.h>

#include <HbrLocalization/LocalizedString.h>

namespace hbr {

std::string displayName(FilterRule::Field field) {
    return LocalizedString("Preferences.ExcludeRules.Field." + std::string(rawValue(field)));
}

std::string displayName(FilterRule::ComparisonOperation comparison) {
    return LocalizedString("Preferences.ExcludeRules.Comparison." + std::string(rawValue(comparison)));
}

}  // namespace hbr
