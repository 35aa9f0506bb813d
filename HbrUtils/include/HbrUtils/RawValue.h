#pragma once

#include <optional>
#include <string_view>

namespace hbr {

/// The case of a stored text; specialised beside each enumeration with raw texts.
template <class T>
std::optional<T> fromRawValue(std::string_view text);

}  // namespace hbr
