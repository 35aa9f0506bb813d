#pragma once

#include <HbrLocalization/StringBundle.h>
#include <System/Environment.h>

#include <optional>
#include <string>
#include <string_view>

// Texts of the core's string bundle in the user's language, by key. The bundle belongs to an environment,
// which keeps it; without one it is Environment::current(). A missing bundle is a packaging fault and ends
// the process with a message. Any thread.
namespace hbr {

/// From the table "Localizable"; the key itself when the table has none. On platform versions below 13 the
/// text of the key with the suffix "_legacy" comes first.
std::string LocalizedString(std::string_view key);
std::string LocalizedString(const platform::Environment& environment, std::string_view key);
std::string LocalizedString(std::string_view key, std::string_view table, std::string_view defaultText);

/// Nothing when the table has no entry, or one that equals the key.
std::optional<std::string> LocalizedStringOrNil(std::string_view key);
std::optional<std::string> LocalizedStringOrNil(std::string_view table, std::string_view key);

/// BCP 47 tag of the language that the texts are in.
std::string textLanguage(const platform::Environment& environment);
/// Whether the table of that language has the text itself.
bool hasLocalizedText(const platform::Environment& environment, std::string_view key);
/// The text in the form that fits a number and a phrase; no number is put in.
std::string localizedForm(const platform::Environment& environment, std::string_view key,
                          std::string_view defaultText, const StringBundle::Form& form);

}  // namespace hbr
