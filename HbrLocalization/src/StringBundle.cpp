#include <HbrLocalization/StringBundle.h>

#include <Foundation/Files.h>
#include <Foundation/Json.h>
#include <Foundation/ResourceBundle.h>
#include <HbrLocalization/PluralCategory.h>

#include "LanguageMatch.h"

#include <system_error>
#include <vector>

namespace hbr {

namespace {

constexpr std::string_view languageFolderSuffix = ".lproj";
constexpr platform::PlatformVersion firstWithNewWording{13, 0, 0};

std::vector<std::string> languagesOf(const std::filesystem::path& folder) {
    std::vector<std::string> languages;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        auto name = entry->path().filename().string();
        if (!name.ends_with(languageFolderSuffix) || name.size() == languageFolderSuffix.size()) continue;
        languages.push_back(name.substr(0, name.size() - languageFolderSuffix.size()));
    }
    return languages;
}

}  // namespace

std::shared_ptr<const StringBundle> StringBundle::find(platform::EnvironmentRef environment,
                                                       std::string_view name) {
    auto folder = platform::findResource(*environment, name);
    std::error_code error;
    if (!folder || !std::filesystem::is_directory(*folder, error)) return nullptr;
    return std::make_shared<const StringBundle>(std::move(environment), std::move(*folder));
}

StringBundle::StringBundle(platform::EnvironmentRef environment, std::filesystem::path folder)
    : environment_(std::move(environment)),
      folder_(std::move(folder)),
      language_(bestLanguage(environment_->locale.languages, languagesOf(folder_))),
      isRightToLeft_(platform::isRightToLeftLanguage(language_)) {}

std::optional<std::string> StringBundle::text(std::string_view key, std::string_view table) const {
    const auto& entries = loadedTable(table);
    auto entry = entries.find(key);
    if (entry == entries.end()) return std::nullopt;
    return entry->second;
}

std::optional<std::string> StringBundle::form(std::string_view key, std::string_view table,
                                              std::optional<std::int64_t> count) const {
    if (count) {
        if (auto counted = text(std::string(key) + '#' + pluralCategory(language_, *count), table))
            return counted;
    }
    return text(key, table);
}

std::string StringBundle::localizedString(std::string_view key, std::string_view table,
                                          std::string_view defaultText,
                                          std::optional<std::int64_t> count) const {
    if (environment_->platformVersion < firstWithNewWording) {
        const auto legacyKey = std::string(key) + "_legacy";
        if (auto legacy = form(legacyKey, table, count); legacy && *legacy != legacyKey)
            return *std::move(legacy);
    }
    if (auto found = form(key, table, count)) return *std::move(found);
    return std::string(defaultText);
}

const StringBundle::Table& StringBundle::loadedTable(std::string_view table) const {
    std::lock_guard lock(mutex_);
    auto loaded = tables_.find(table);
    if (loaded == tables_.end()) loaded = tables_.emplace(table, readTable(table)).first;
    return loaded->second;
}

StringBundle::Table StringBundle::readTable(std::string_view table) const {
    if (language_.empty() || table.find('/') != std::string_view::npos) return {};
    const auto file =
        folder_ / (language_ + std::string(languageFolderSuffix)) / (std::string(table) + ".json");
    std::error_code error;
    const auto report = [&](std::string field, std::string text) {
        environment_->diagnostics->report(
            {platform::Diagnostic::Severity::warning, file, std::nullopt, std::move(field), std::move(text)});
    };
    auto content = platform::readRegularFile(file, error);
    if (!content) {
        if (error != std::errc::no_such_file_or_directory) report("", error.message());
        return {};
    }
    auto json = platform::parseJson(*content);
    const auto* object = json ? json->asObject() : nullptr;
    if (!object) {
        report("", "no JSON object of keys and texts; English texts are used");
        return {};
    }
    Table entries;
    for (const auto& [key, value] : *object) {
        if (const auto* text = value.asString())
            entries.insert_or_assign(key, *text);
        else
            report(key, "no text; the English text is used");
    }
    return entries;
}

}  // namespace hbr
