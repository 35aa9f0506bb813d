#pragma once

#include <Foundation/Environment.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace hbr {

/// A folder of string tables: LANGUAGE.lproj/TABLE.json, each one object of key and text; LANGUAGE is a
/// BCP 47 tag. The language is the one of the bundle that fits the user's preferred languages best, English
/// when none does. A table is read once. Safe from any thread.
///
/// A text with a number may have further forms under KEY#CATEGORY ("#one", "#two", …, the plural categories
/// of CLDR); the text of KEY serves all numbers that have no form of their own.
class StringBundle {
  public:
    /// Looks in the environment's resource directories; nothing when none holds such a folder.
    static std::shared_ptr<const StringBundle> find(platform::EnvironmentRef environment,
                                                    std::string_view name);
    StringBundle(platform::EnvironmentRef environment, std::filesystem::path folder);

    /// BCP 47 tag of the language in use; empty when the bundle holds none.
    const std::string& language() const { return language_; }
    bool isRightToLeft() const { return isRightToLeft_; }
    /// Nothing when the table or the key is missing. A table that cannot be read is told as a diagnostic.
    std::optional<std::string> text(std::string_view key, std::string_view table) const;
    /// The text, in its form for `count` if there is one, or the default; on platform versions below 13 the
    /// key's "_legacy" twin comes first.
    std::string localizedString(std::string_view key, std::string_view table, std::string_view defaultText,
                                std::optional<std::int64_t> count = std::nullopt) const;

  private:
    using Table = std::map<std::string, std::string, std::less<>>;
    const Table& loadedTable(std::string_view table) const;
    Table readTable(std::string_view table) const;
    std::optional<std::string> form(std::string_view key, std::string_view table,
                                    std::optional<std::int64_t> count) const;

    platform::EnvironmentRef environment_;
    std::filesystem::path folder_;
    std::string language_;
    bool isRightToLeft_ = false;
    mutable std::mutex mutex_;
    mutable std::map<std::string, Table, std::less<>> tables_;
};

}  // namespace hbr
