#pragma once

#include <Foundation/Environment.h>
#include <HbrLocalization/FormatArgument.h>

#include <initializer_list>
#include <string>
#include <string_view>

namespace hbr {

/// A text of the companion's own string table, in the user's language. Any thread.
std::string companionText(const platform::Environment& environment, std::string_view key,
                          std::initializer_list<L10n::FormatArgument> arguments = {});

}  // namespace hbr
