#include "TomlTables.h"

#include <Foundation/Text.h>

#include <algorithm>
#include <utility>

namespace hbr {

namespace {

/// What stands in front of a comment, without blanks at both ends.
std::string_view withoutComment(std::string_view line) {
    char quote = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (quote != 0) {
            if (line[i] == '\\' && quote == '"') {
                ++i;
            } else if (line[i] == quote) {
                quote = 0;
            }
        } else if (line[i] == '"' || line[i] == '\'') {
            quote = line[i];
        } else if (line[i] == '#') {
            line = line.substr(0, i);
        }
    }
    const auto first = line.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
}

std::string withoutBlanks(std::string_view text) {
    std::string result;
    for (char c : text) {
        if (c != ' ' && c != '\t') result += c;
    }
    return result;
}

/// The key that a line sets; nothing for any other line.
std::string_view keyOf(std::string_view line) {
    const std::string_view content = withoutComment(line);
    const auto equals = content.find('=');
    if (equals == std::string_view::npos) return {};
    return withoutComment(content.substr(0, equals));
}

bool isBlank(std::string_view line) {
    return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

}  // namespace

TomlTables::TomlTables(std::string_view text, std::string_view name)
    : header_("[[" + std::string(name) + "]]") {
    if (text.ends_with('\n')) text.remove_suffix(1);
    std::vector<std::string>* target = &before_;
    if (text.empty()) return;
    for (const auto& line : platform::split(std::string(text), "\n")) {
        const std::string_view content = withoutComment(line);
        if (withoutBlanks(content) == header_) {
            tables_.emplace_back();
            target = &tables_.back().lines;
        } else if (content.starts_with('[') && !tables_.empty()) {
            target = &tables_.back().after;
        }
        target->emplace_back(line);
    }
}

void TomlTables::set(std::size_t table, std::string_view key, const std::optional<std::string>& value) {
    auto& lines = tables_[table].lines;
    const auto found = std::ranges::find_if(lines, [&](const auto& line) { return keyOf(line) == key; });
    if (found == lines.end()) {
        if (!value) return;
        // Behind what is there, in front of the blank lines and comments that lead to the next table.
        auto end = lines.end();
        while (end != lines.begin() && withoutComment(*std::prev(end)).empty())
            --end;
        lines.insert(end, std::string(key) + " = " + *value);
    } else if (!value) {
        lines.erase(found);
    } else {
        const std::string_view content = withoutComment(*found);
        const auto start = static_cast<std::size_t>(content.data() - found->data());
        const std::string comment = found->substr(start + content.size());
        *found = found->substr(0, start) + std::string(key) + " = " + *value + comment;
    }
}

void TomlTables::remove(std::size_t table) {
    tables_[table].isRemoved = true;
}

std::size_t TomlTables::append() {
    auto& last = tables_.empty()                ? before_
                 : tables_.back().after.empty() ? tables_.back().lines
                                                : tables_.back().after;
    if (!last.empty() && !isBlank(last.back())) last.emplace_back();
    tables_.emplace_back().lines.push_back(header_);
    return tables_.size() - 1;
}

std::string TomlTables::text() const {
    std::string text;
    const auto add = [&text](const std::vector<std::string>& lines) {
        for (const std::string& line : lines)
            text += line + "\n";
    };
    add(before_);
    for (const Table& table : tables_) {
        if (!table.isRemoved) add(table.lines);
        add(table.after);
    }
    return text;
}

std::string tomlText(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string quoted = "\"";
    for (char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
        } else if (code < 0x20 || code == 0x7f) {
            quoted += "\\u00";
            quoted += digits[code >> 4];
            quoted += digits[code & 15];
        } else {
            quoted += c;
        }
    }
    return quoted + "\"";
}

}  // namespace hbr
