#pragma once

#include <HbrLocalization/FormatArgument.h>
#include <TimeAndText/Locale.h>

#include <span>
#include <string>
#include <string_view>

namespace hbr {

/// Puts the arguments in for "%@", "%d", "%i" (length letters allowed) and "%1$@"; "%%" is a percent sign.
/// Numbers are written as the locale writes them. A placeholder without an argument stays as written.
std::string formattedText(std::string_view format, std::span<const L10n::FormatArgument> arguments,
                          const platform::Locale& locale);

}  // namespace hbr
