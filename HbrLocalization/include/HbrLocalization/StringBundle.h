#pragma once

#include <System/Environment.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace hbr {

/// A folder of string tables: LANGUAGE.lproj/TABLE.json, each one object of key and text; LANGUAGE is a
/// BCP 47 tag. The language is the one of the bundle that fits the user's preferred languages best, English
/// when none does. A table is read once. Safe from any thread.
///
/// A text with a number may have further forms under KEY#CATEGORY ("#one", "#two", …, the plural categories
/// of CLDR); the text of KEY serves all numbers that have no form of their own. A word that is bent by the
/// phrase it is put into has forms under KEY@PHRASE and KEY@PHRASE#CATEGORY.
class StringBundle {
  public:
    struct Form {
        std::optional<std::int64_t> count = std::nullopt;
        /// Empty: none.
        std::string_view phrase = {};
    };

    /// The bundle of that name that the environment keeps, found on first use; nothing when none of its
    /// resource directories holds such a folder.
    static std::shared_ptr<const StringBundle> of(const platform::Environment& environment,
                                                  std::string_view name);
    StringBundle(const platform::Environment& environment, std::filesystem::path folder);

    /// BCP 47 tag of the language in use; empty when the bundle holds none.
    const std::string& language() const { return language_; }
    bool isRightToLeft() const { return isRightToLeft_; }
    /// Nothing when the table or the key is missing. A table that cannot be read is reported as a diagnostic.
    std::optional<std::string> text(std::string_view key, std::string_view table) const;
    /// The same in English, whatever the language in use.
    std::optional<std::string> englishText(std::string_view key, std::string_view table,
                                           const Form& form) const;
    /// The text in its form if there is one, or the default; on platform versions below 13 the key's
    /// "_legacy" twin comes first.
    std::string localizedString(std::string_view key, std::string_view table, std::string_view defaultText,
                                const Form& form) const;
    std::string localizedString(std::string_view key, std::string_view table,
                                std::string_view defaultText) const;

  private:
    using Table = std::map<std::string, std::string, std::less<>>;
    const Table& loadedTable(const std::string& language, std::string_view table) const;
    Table readTable(const std::string& language, std::string_view table) const;
    std::optional<std::string> formOf(std::string_view key, const Table& table, const std::string& language,
                                      const Form& form) const;

    platform::PlatformVersion platformVersion_;
    std::shared_ptr<platform::DiagnosticsSink> diagnostics_;
    std::filesystem::path folder_;
    std::string language_;
    bool isRightToLeft_ = false;
    mutable std::mutex mutex_;
    /// By language and name.
    mutable std::map<std::pair<std::string, std::string>, Table, std::less<>> tables_;
};

}  // namespace hbr
