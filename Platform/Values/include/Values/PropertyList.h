#pragma once

#include <Values/PropertyValue.h>

#include <optional>
#include <span>
#include <string>

namespace platform {

/// Reads the XML and the binary form; nothing when it is neither or is damaged. Dates become seconds
/// since 2001 (double).
std::optional<PropertyValue> readPropertyList(std::span<const std::uint8_t> bytes);
std::string writeXmlPropertyList(const PropertyValue& root);

}  // namespace platform
