#pragma once

#include <HbrLocalization/PluralCategory.h>
#include <Values/JsonText.h>
#include <support/TemporaryDirectory.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace test {

using StringTable = std::map<std::string, std::string>;

inline StringTable readStringTable(const std::filesystem::path& bundle, const std::string& language) {
    StringTable table;
    const auto json = platform::parseJson(readFile(bundle / (language + ".lproj") / "Localizable.json"));
    for (const auto& [key, text] : *json.value().asObject())
        table[key] = *text.asString();
    return table;
}

inline std::vector<std::string> languagesIn(const std::filesystem::path& bundle) {
    std::vector<std::string> languages;
    for (const auto& folder : std::filesystem::directory_iterator(bundle))
        languages.push_back(folder.path().stem());
    std::ranges::sort(languages);
    return languages;
}

/// Position and kind of what is put in ("1@", "2d"), whatever the order in the text; throws for a percent
/// sign that is neither a placeholder nor written twice.
inline std::multiset<std::string> placeholdersIn(const std::string& text) {
    static const std::regex pattern(R"(%(?:(%)|(?:(\d)\$)?(?:[lq]*)([@di])|))");
    std::multiset<std::string> placeholders;
    int next = 0;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match) {
        if ((*match)[1].matched) continue;
        if (!(*match)[3].matched) throw std::runtime_error("a single percent sign");
        const auto position = (*match)[2].matched ? (*match)[2].str() : std::to_string(++next);
        placeholders.insert(position + ((*match)[3] == "@" ? "@" : "d"));
    }
    return placeholders;
}

/// What a translator got wrong, one line each.
class TableExamination {
  public:
    TableExamination(std::string language, StringTable table, StringTable english)
        : language_(std::move(language)), table_(std::move(table)), english_(std::move(english)) {
        constexpr int furthest = 200;
        for (int number = 0; number <= furthest; ++number)
            numbersOf_[hbr::pluralCategory(language_, number)].insert(number);
    }

    std::vector<std::string> faults() {
        for (const auto& [key, text] : english_) {
            if (key.find_first_of("@#") != std::string::npos) continue;
            if (!table_.contains(key)) report(key, "missing");
            if (language_ != "en" && hasNumber(text)) examineForms(key);
        }
        for (const auto& [key, text] : table_)
            examine(key, text);
        return faults_;
    }

  private:
    void report(const std::string& key, std::string_view fault) {
        faults_.push_back(language_ + ": " + key + ": " + std::string(fault));
    }

    static bool hasNumber(const std::string& text) {
        return std::ranges::any_of(placeholdersIn(text), [](const auto& p) { return p.ends_with('d'); });
    }

    void examineForms(const std::string& key) {
        constexpr int usual = 15;
        for (const auto& [category, numbers] : numbersOf_) {
            if (category != "other" && *numbers.begin() <= usual && !table_.contains(key + "#" + category))
                report(key, "no form #" + category);
        }
    }

    void examine(const std::string& key, const std::string& text) {
        const auto mark = key.find('#');
        const auto original = english_.find(key.substr(0, key.find_first_of("@#")));
        if (original == english_.end()) return report(key, "unknown key");
        if (text.empty()) return report(key, "empty");
        if (isBlank(text.front()) || isBlank(text.back())) report(key, "blank at an end");
        try {
            auto wanted = placeholdersIn(original->second);
            if (mark != std::string::npos) {
                const auto numbers = numbersOf_.find(key.substr(mark + 1));
                if (numbers == numbersOf_.end() || numbers->first == "other")
                    return report(key, "no plural form of this language");
                // Words may say the number where the form serves that one only.
                if (numbers->second.size() == 1 && !hasNumber(text))
                    std::erase_if(wanted, [](const auto& p) { return p.ends_with('d'); });
            }
            if (placeholdersIn(text) != wanted) report(key, "other placeholders than in English");
        } catch (const std::runtime_error& error) {
            report(key, error.what());
        }
    }

    static bool isBlank(char c) { return c == ' ' || c == '\n' || c == '\t'; }

    std::string language_;
    StringTable table_;
    StringTable english_;
    std::map<std::string, std::set<int>> numbersOf_;
    std::vector<std::string> faults_;
};

}  // namespace test
