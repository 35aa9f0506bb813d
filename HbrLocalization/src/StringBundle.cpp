#include <HbrLocalization/StringBundle.h>

#include <HbrLocalization/PluralCategory.h>
#include <System/Files.h>
#include <System/ResourceBundle.h>
#include <Values/JsonText.h>

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

template <typename Table>
std::optional<std::string> textIn(const Table& table, std::string_view key) {
    const auto entry = table.find(key);
    if (entry == table.end()) return std::nullopt;
    return entry->second;
}

}  // namespace

std::shared_ptr<const StringBundle> StringBundle::of(const platform::Environment& environment,
                                                     std::string_view name) {
    return environment.derived.get<StringBundle>(name, [&]() -> std::shared_ptr<const StringBundle> {
        auto folder = platform::findResource(environment, name);
        std::error_code error;
        if (!folder || !std::filesystem::is_directory(*folder, error)) return nullptr;
        return std::make_shared<const StringBundle>(environment, std::move(*folder));
    });
}

StringBundle::StringBundle(const platform::Environment& environment, std::filesystem::path folder)
    : platformVersion_(environment.platformVersion),
      diagnostics_(environment.diagnostics),
      folder_(std::move(folder)),
      language_(bestLanguage(environment.locale.languages, languagesOf(folder_))),
      isRightToLeft_(platform::isRightToLeftLanguage(language_)) {}

std::optional<std::string> StringBundle::text(std::string_view key, std::string_view table) const {
    return textIn(loadedTable(language_, table), key);
}

std::optional<std::string> StringBundle::englishText(std::string_view key, std::string_view table,
                                                     const Form& form) const {
    const std::string english = "en";
    return formOf(key, loadedTable(english, table), english, form);
}

std::optional<std::string> StringBundle::formOf(std::string_view key, const Table& table,
                                                const std::string& language, const Form& form) const {
    std::string category;
    if (form.count) category = '#' + pluralCategory(language, *form.count);
    if (!form.phrase.empty()) {
        const std::string inPhrase = std::string(key).append("@").append(form.phrase);
        if (auto text = textIn(table, inPhrase + category)) return text;
        if (auto text = textIn(table, inPhrase)) return text;
    }
    if (!category.empty()) {
        if (auto text = textIn(table, std::string(key) + category)) return text;
    }
    return textIn(table, key);
}

std::string StringBundle::localizedString(std::string_view key, std::string_view table,
                                          std::string_view defaultText) const {
    return localizedString(key, table, defaultText, {});
}

std::string StringBundle::localizedString(std::string_view key, std::string_view table,
                                          std::string_view defaultText, const Form& form) const {
    const Table& texts = loadedTable(language_, table);
    if (platformVersion_ < firstWithNewWording) {
        const auto legacyKey = std::string(key) + "_legacy";
        if (auto legacy = formOf(legacyKey, texts, language_, form); legacy && *legacy != legacyKey)
            return *std::move(legacy);
    }
    if (auto found = formOf(key, texts, language_, form)) return *std::move(found);
    return std::string(defaultText);
}

const StringBundle::Table& StringBundle::loadedTable(const std::string& language,
                                                     std::string_view table) const {
    std::lock_guard lock(mutex_);
    std::pair name(language, std::string(table));
    auto loaded = tables_.find(name);
    if (loaded == tables_.end()) {
        auto read = readTable(language, table);
        loaded = tables_.emplace(std::move(name), std::move(read)).first;
    }
    return loaded->second;
}

StringBundle::Table StringBundle::readTable(const std::string& language, std::string_view table) const {
    if (language.empty() || table.find('/') != std::string_view::npos) return {};
    const auto file =
        folder_ / (language + std::string(languageFolderSuffix)) / (std::string(table) + ".json");
    std::error_code error;
    const auto report = [&](std::string field, std::string text) {
        diagnostics_->report(
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
