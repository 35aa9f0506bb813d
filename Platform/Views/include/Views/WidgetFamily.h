#pragma once

#include <Views/Geometry.h>

#include <optional>
#include <string_view>

namespace platform {

enum class WidgetFamily { systemSmall, systemMedium, systemLarge };

/// Outer size in points: 170 × 170, 364 × 170, 364 × 382.
Size sizeOf(WidgetFamily family);
/// "small", "medium", "large".
std::string_view nameOf(WidgetFamily family);
std::optional<WidgetFamily> widgetFamily(std::string_view name);

}  // namespace platform
