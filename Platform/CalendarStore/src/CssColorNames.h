#pragma once

#include <Values/Color.h>

#include <optional>
#include <string_view>

namespace platform {

/// A colour by its CSS3 name, as COLOR writes it. Letter case ignored.
std::optional<Color> cssColor(std::string_view name);

}  // namespace platform
