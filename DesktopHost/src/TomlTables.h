#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// The text of a TOML document that holds tables [[NAME]], edited line by line so that comments, unknown
/// keys and layout stay. Knows no strings over several lines and no tables in brackets of a line: whoever
/// edits reads the result back and writes the document anew where it is not what was meant.
class TomlTables {
  public:
    TomlTables(std::string_view text, std::string_view name);

    std::size_t count() const { return tables_.size(); }
    /// `value` as TOML writes it; nothing removes the key.
    void set(std::size_t table, std::string_view key, const std::optional<std::string>& value);
    void remove(std::size_t table);
    /// Behind the last one.
    std::size_t append();
    std::string text() const;

  private:
    struct Table {
        std::vector<std::string> lines;
        bool isRemoved = false;
        /// Lines of other tables behind it.
        std::vector<std::string> after;
    };

    std::string header_;
    std::vector<std::string> before_;
    std::vector<Table> tables_;
};

/// In double quotes, with what may not stand there escaped.
std::string tomlText(std::string_view text);

}  // namespace hbr
