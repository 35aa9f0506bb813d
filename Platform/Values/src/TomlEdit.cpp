#include <TimeAndText/Ascii.h>
#include <Values/TomlEdit.h>

#include <Values/Toml.h>

#include <toml++/toml.h>

#include <algorithm>
#include <vector>

namespace platform {
namespace {

/// Lines count from 0, each with its line end.
class TextLines {
  public:
    explicit TextLines(std::string_view text) : text_(text) {
        starts_.push_back(0);
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\n' && i + 1 < text.size()) starts_.push_back(i + 1);
        }
    }

    std::size_t count() const { return starts_.size(); }
    std::size_t start(std::size_t line) const { return line < count() ? starts_[line] : text_.size(); }
    std::string_view content(std::size_t line) const {
        return trimmedAscii(text_.substr(start(line), start(line + 1) - start(line)));
    }
    bool isComment(std::size_t line) const { return line < count() && content(line).starts_with('#'); }
    bool isBlank(std::size_t line) const { return line < count() && content(line).empty(); }
    /// The library counts columns in code points.
    std::size_t offset(const toml::source_position& position) const {
        std::size_t at = start(position.line - 1);
        for (auto column = position.column; column > 1 && at < text_.size(); --column) {
            do {
                ++at;
            } while (at < text_.size() && (static_cast<unsigned char>(text_[at]) & 0xC0U) == 0x80U);
        }
        return at;
    }

  private:
    std::string_view text_;
    std::vector<std::size_t> starts_;
};

/// A table [[array]] in its document; positions hold while this lives.
struct FoundTable {
    toml::table root;
    const toml::table* table = nullptr;
    TextLines lines;

    std::size_t headerLine() const { return table->source().begin.line - 1; }
};

std::optional<FoundTable> findTable(std::string_view text, std::string_view array, std::size_t index) {
    FoundTable found{{}, nullptr, TextLines(text)};
    try {
        found.root = toml::parse(text);
    } catch (const toml::parse_error&) {
        return std::nullopt;
    }
    const toml::array* tables = found.root[array].as_array();
    const toml::node* node = tables && index < tables->size() ? tables->get(index) : nullptr;
    found.table = node ? node->as_table() : nullptr;
    if (!found.table || found.table->is_inline()) return std::nullopt;
    return found;
}

/// The last line that the node or anything in it takes.
std::size_t lastLine(const toml::node& node) {
    std::size_t last = node.source().end.line - 1;
    if (const auto* table = node.as_table()) {
        for (const auto& entry : *table)
            last = std::max(last, lastLine(entry.second));
    } else if (const auto* array = node.as_array()) {
        for (const auto& element : *array)
            last = std::max(last, lastLine(element));
    }
    return last;
}

bool isWrittenBelow(const toml::node& node) {
    if (const auto* table = node.as_table()) return !table->is_inline();
    const auto* array = node.as_array();
    return array && !array->empty() && isWrittenBelow(*array->get(0));
}

std::string replaced(std::string_view text, std::size_t from, std::size_t to, std::string_view with) {
    std::string result(text.substr(0, from));
    result += with;
    result += text.substr(to);
    return result;
}

std::string assignment(std::string_view key, const PropertyValue& value) {
    PropertyDictionary single;
    single.set(std::string(key), value);
    return writeToml(single);
}

}  // namespace

std::optional<std::string> withoutTomlTable(std::string_view text, std::string_view array,
                                            std::size_t index) {
    const auto found = findTable(text, array, index);
    if (!found) return std::nullopt;
    const TextLines& lines = found->lines;
    std::size_t first = found->headerLine();
    while (first > 0 && lines.isComment(first - 1))
        --first;
    if (first == 0) first = found->headerLine();

    std::size_t end = lastLine(*found->table) + 1;
    std::size_t comments = end;
    while (lines.isComment(comments))
        ++comments;
    // Comments right behind it are its own, unless the next table follows them directly.
    const bool isNextOnes = comments < lines.count() && !lines.isBlank(comments);
    if (!isNextOnes) end = comments;
    while (lines.isBlank(end))
        ++end;
    // Nor does the last one leave the blank lines that set it off.
    while (end >= lines.count() && first > 0 && lines.isBlank(first - 1))
        --first;
    return replaced(text, lines.start(first), lines.start(end), "");
}

std::optional<std::string> withTomlValue(std::string_view text, std::string_view array, std::size_t index,
                                         std::string_view key, const PropertyValue* value) {
    const auto found = findTable(text, array, index);
    if (!found) return std::nullopt;
    const TextLines& lines = found->lines;
    const auto there = found->table->find(key);
    if (there == found->table->end()) {
        if (!value) return std::string(text);
        std::size_t last = found->headerLine();
        for (const auto& entry : *found->table) {
            if (!isWrittenBelow(entry.second)) last = std::max(last, lastLine(entry.second));
        }
        const std::size_t at = lines.start(last + 1);
        const bool isUnended = at > 0 && text[at - 1] != '\n';
        return replaced(text, at, at, (isUnended ? "\n" : "") + assignment(key, *value));
    }
    if (isWrittenBelow(there->second)) return std::nullopt;
    if (!value) {
        const std::size_t first = there->first.source().begin.line - 1;
        return replaced(text, lines.start(first), lines.start(lastLine(there->second) + 1), "");
    }
    const auto& source = there->second.source();
    std::string written = assignment(key, *value);
    written.pop_back();
    written.erase(0, written.find(" = ") + 3);
    return replaced(text, lines.offset(source.begin), lines.offset(source.end), written);
}

std::optional<std::string> withMoreToml(std::string_view text, std::string_view array,
                                        const PropertyDictionary& table) {
    PropertyDictionary root;
    root.set(std::string(array), PropertyArray{table});
    std::string result(text);
    if (!result.empty()) result += result.ends_with('\n') ? "\n" : "\n\n";
    result += writeToml(root);
    // An array in brackets cannot go on behind itself.
    TomlError problem;
    if (!parseToml(result, problem)) return std::nullopt;
    return result;
}

}  // namespace platform
