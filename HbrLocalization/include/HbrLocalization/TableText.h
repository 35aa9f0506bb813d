#pragma once

#include <HbrLocalization/FormatArgument.h>
#include <System/Environment.h>

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace hbr {

/// A text of the table "Localizable" of a program's own string bundle, with its arguments put in: in the form
/// for the first number, in English where the language lacks it, and the key where English lacks it as well
/// (or the bundle is missing). Texts that run against the language are isolated. Any thread.
std::string tableText(const platform::Environment& environment, std::string_view bundle, std::string_view key,
                      std::initializer_list<L10n::FormatArgument> arguments = {});
std::string tableText(const platform::Environment& environment, std::string_view bundle, std::string_view key,
                      std::span<const L10n::FormatArgument> arguments);
/// The same in English whatever the user's language, for what other programs read: nothing is isolated, and
/// numbers are plain digits.
std::string englishTableText(const platform::Environment& environment, std::string_view bundle,
                             std::string_view key, std::span<const L10n::FormatArgument> arguments);

}  // namespace hbr
