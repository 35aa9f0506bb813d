#pragma once

#include <HbrLocalization/FormatArgument.h>
#include <When/WhenText.h>

#include <initializer_list>
#include <string_view>

namespace hbr {

/// Throws a WhenRefusal with `isUnderstood` and a text of the companion's table.
[[noreturn]] void refuseWhen(const platform::Environment& environment, std::string_view key,
                             std::initializer_list<L10n::FormatArgument> arguments = {});

}  // namespace hbr
