#pragma once

#include <Values/JsonText.h>
#include <Values/JsonValue.h>
#include <support/BuildResources.h>
#include <support/StringTables.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace test {

inline constexpr const char* pseudoLanguage = "en-XA";

/// English as long as a wordy language: vowels doubled and accented, then syllables until it is 40 % longer.
inline std::string pseudoText(std::string_view english) {
    std::string text;
    double missing = 0.4 * static_cast<double>(english.size());
    for (std::size_t i = 0; i < english.size(); ++i) {
        // A placeholder stays: "%@", "%2$@", "%i".
        if (english[i] == '%') {
            const auto end = english.find_first_of("@id%", i + 1);
            text += english.substr(i, end - i + 1);
            i = end;
            continue;
        }
        constexpr std::string_view vowels = "aeiouAEIOU";
        constexpr std::array<const char*, 10> accented = {"â", "ê", "î", "ô", "û", "Â", "Ê", "Î", "Ô", "Û"};
        text += english[i];
        if (const auto vowel = vowels.find(english[i]); vowel != std::string_view::npos && missing > 0) {
            text += accented[vowel];
            missing -= 1;
        }
    }
    // An abbreviation of a few letters stays one.
    for (; missing >= 1.5; missing -= 3)
        text += " wô";
    return text;
}

/// A resource folder whose string bundles hold that language alone.
inline void writePseudoLanguage(const std::filesystem::path& resources) {
    for (const char* bundle :
         {"HbrLocalization_HbrLocalization.bundle", "HeedbannerWidgetExtension.bundle"}) {
        auto json = platform::JsonValue::object();
        for (const auto& [key, english] : readStringTable(buildResources() / bundle, "en"))
            json.set(key, pseudoText(english));
        const auto folder = resources / bundle / (std::string(pseudoLanguage) + ".lproj");
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "Localizable.json") << platform::writeJson(json, 1);
    }
}

}  // namespace test
