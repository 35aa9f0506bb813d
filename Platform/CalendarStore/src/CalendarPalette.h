#pragma once

#include <Values/Color.h>

#include <set>
#include <string>
#include <string_view>

namespace platform {

/// A colour for a calendar that brings none: chosen by its identifier, the same in every run, and not one
/// that `used` holds while others are free. The choice is added to `used`.
Color paletteColor(std::string_view calendarIdentifier, std::set<std::string>& used);

}  // namespace platform
