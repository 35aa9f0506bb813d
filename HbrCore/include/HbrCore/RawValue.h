#pragma once

#include <optional>
#include <string_view>

namespace hbr {

/// The case that is stored as this text; specialised beside each enumeration, exact in letter case.
template <class T>
std::optional<T> fromRawValue(std::string_view text);

}  // namespace hbr
