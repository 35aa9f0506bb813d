#include "CommandText.h"

#include <TimeAndText/Ascii.h>

#include <algorithm>
#include <utility>

namespace hbr {

namespace {

bool isPlain(char c) {
    constexpr std::string_view plain = "_-./@:+=,%";
    return platform::isAsciiAlphanumeric(c) || plain.find(c) != std::string_view::npos;
}

std::string quoted(const std::string& word) {
    if (!word.empty() && std::ranges::all_of(word, isPlain)) return word;
    // Inside double quotes these keep their meaning for the shell.
    if (word.find_first_of("\"$`\\!") == std::string::npos) return '"' + word + '"';
    std::string text = "'";
    for (const char c : word) {
        if (c == '\'') {
            text += "'\\''";
        } else {
            text += c;
        }
    }
    return text + "'";
}

}  // namespace

std::string commandText(const std::vector<std::string>& words) {
    std::string text = "heedbanner";
    for (const auto& word : words)
        text += " " + quoted(word);
    return text;
}

std::string settingCommand(const SettingFacts& setting, std::string value) {
    return commandText({"settings", "set", std::string(setting.name), std::move(value)});
}

}  // namespace hbr
