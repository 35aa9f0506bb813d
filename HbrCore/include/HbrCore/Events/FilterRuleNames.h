#pragma once

#include <HbrCore/Events/FilterRule.h>
#include <System/Environment.h>

#include <string>

namespace hbr {

/// What the user reads for a field and a comparison; without an environment, of Environment::current().
std::string displayName(FilterRule::Field field, const platform::Environment& environment);
std::string displayName(FilterRule::ComparisonOperation comparison, const platform::Environment& environment);
std::string displayName(FilterRule::Field field);
std::string displayName(FilterRule::ComparisonOperation comparison);
/// "Title contains "Lunch"", with the value as it was typed; days of the week by their names.
std::string displayText(const FilterRule& rule, const platform::Environment& environment);

}  // namespace hbr
