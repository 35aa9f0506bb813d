#pragma once

#include <Values/JsonValue.h>

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Nothing when the text is not JSON. A repeated key keeps the first place and the last value.
std::optional<JsonValue> parseJson(std::string_view text);
/// indent < 0: one line without blanks. Bad UTF-8 is replaced, never an error. A double always has a
/// fraction or an exponent ("60.0").
std::string writeJson(const JsonValue& value, int indent = -1);

}  // namespace platform
