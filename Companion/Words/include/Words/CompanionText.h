#pragma once

#include <HbrLocalization/FormatArgument.h>
#include <System/Environment.h>

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace hbr {

/// A text of the companion's own string table, in the user's language. Any thread.
std::string companionText(const platform::Environment& environment, std::string_view key,
                          std::initializer_list<L10n::FormatArgument> arguments = {});
std::string companionText(const platform::Environment& environment, std::string_view key,
                          std::span<const L10n::FormatArgument> arguments);
/// The same in English, for JSON.
std::string englishCompanionText(const platform::Environment& environment, std::string_view key,
                                 std::span<const L10n::FormatArgument> arguments = {});
/// "1 calendar", "2 calendars": a text whose only argument is that number.
std::string companionCount(const platform::Environment& environment, std::string_view key, std::size_t count);

}  // namespace hbr
