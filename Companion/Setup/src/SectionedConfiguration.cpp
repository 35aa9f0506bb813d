#include "SectionedConfiguration.h"

#include <CalendarFiles/ContentLine.h>
#include <CalendarFiles/LogicalLines.h>

#include <algorithm>

namespace hbr {

namespace {

using platform::trimmedAscii;

/// "[[name]] # comment" as a section; nothing for other lines.
std::optional<ConfigurationSection> sectionOf(std::string_view line) {
    const std::size_t depth = std::min(line.find_first_not_of('['), line.size());
    const std::size_t end = line.find(']', depth);
    if (depth == 0 || end == std::string_view::npos) return std::nullopt;
    return ConfigurationSection{
        std::string(trimmedAscii(line.substr(depth, end - depth))), static_cast<int>(depth), {}};
}

/// In double quotes a backslash escapes the next character.
std::string quotedText(std::string_view text) {
    std::string result;
    const char quote = text.front();
    for (std::size_t i = 1; i < text.size() && text[i] != quote; ++i) {
        if (text[i] == '\\' && quote == '"' && i + 1 < text.size()) ++i;
        result += text[i];
    }
    return result;
}

std::string valueText(std::string_view text) {
    text = trimmedAscii(text);
    if (text.starts_with('"') || text.starts_with('\'')) return quotedText(text);
    return std::string(trimmedAscii(text.substr(0, text.find(" #"))));
}

}  // namespace

std::optional<std::string> ConfigurationSection::value(std::string_view key) const {
    const auto found =
        std::find_if(values.rbegin(), values.rend(), [&](const auto& one) { return one.first == key; });
    return found == values.rend() ? std::nullopt : std::optional(found->second);
}

std::vector<ConfigurationSection> readSections(std::string_view text) {
    std::vector<ConfigurationSection> sections;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmedAscii(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.front() == '#' || line.front() == ';') continue;
        if (auto section = sectionOf(line)) {
            sections.push_back(*std::move(section));
            continue;
        }
        const std::size_t sign =
            std::min(line.find('='), line.find('=') == std::string_view::npos ? line.find(':') : line.size());
        if (sections.empty() || sign >= line.size()) continue;
        sections.back().values.emplace_back(trimmedAscii(line.substr(0, sign)),
                                            valueText(line.substr(sign + 1)));
    }
    return sections;
}

}  // namespace hbr
