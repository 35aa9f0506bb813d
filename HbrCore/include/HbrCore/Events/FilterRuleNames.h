#pragma once

#include <HbrCore/Events/FilterRule.h>

#include <string>

namespace hbr {

/// What the user reads for a field and a comparison, in the language of the process.
std::string displayName(FilterRule::Field field);
std::string displayName(FilterRule::ComparisonOperation comparison);

}  // namespace hbr
