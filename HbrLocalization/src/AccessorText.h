#pragma once

#include <HbrLocalization/FormatArgument.h>
#include <System/Environment.h>

#include <initializer_list>
#include <string>
#include <string_view>

namespace hbr::L10n {

std::string accessorText(const platform::Environment& environment, std::string_view key,
                         std::string_view defaultText, std::initializer_list<FormatArgument> arguments);
/// Of Environment::current().
std::string accessorText(std::string_view key, std::string_view defaultText,
                         std::initializer_list<FormatArgument> arguments);

}  // namespace hbr::L10n
