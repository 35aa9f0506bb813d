#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hbr {

/// The plural form that a number takes in a language ("zero", "one", "two", "few", "many", "other"), by
/// CLDR's rules. Safe from any thread.
std::string pluralCategory(std::string_view language, std::int64_t count);

}  // namespace hbr
