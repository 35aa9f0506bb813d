#pragma once

#include <optional>
#include <string>
#include <string_view>

// Texts of the core's string bundle in the user's language (Environment::current()), by key. A missing
// bundle is a packaging fault and ends the process with a message. Any thread.
namespace hbr {

/// From the table "Localizable"; the key itself when the table has none. On platform versions below 13 the
/// text of the key with the suffix "_legacy" comes first.
std::string LocalizedString(std::string_view key);
std::string LocalizedString(std::string_view key, std::string_view table, std::string_view defaultText);

/// Nothing when the table has no entry, or one that equals the key.
std::optional<std::string> LocalizedStringOrNil(std::string_view key);
std::optional<std::string> LocalizedStringOrNil(std::string_view table, std::string_view key);

}  // namespace hbr
