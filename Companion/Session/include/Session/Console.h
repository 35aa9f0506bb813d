#pragma once

#include <Values/Color.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace hbr {

/// The program's output: answers on standard output, everything else on standard error. Colours and weights
/// are used only on a terminal that supports them.
class Console {
  public:
    /// The process's own streams.
    explicit Console(bool allowColors);

    std::ostream& out() const;
    std::ostream& err() const;
    /// True when a question can be asked: a person reads standard error and types on standard input.
    bool isInteractive() const;
    bool hasColors() const { return colors_; }
    /// Columns of the terminal; nothing when standard output is not a terminal.
    std::optional<int> width() const;

    std::string bold(std::string_view text) const { return styled(text, "1"); }
    std::string faint(std::string_view text) const { return styled(text, "2"); }
    /// In 24-bit colour where the terminal announces it, else in the nearest of 256 colours.
    std::string colored(std::string_view text, const platform::Color& color) const;
    bool hasLinks() const { return links_; }
    /// A text that opens the address when clicked; only the text where the terminal has no links.
    std::string linked(std::string_view text, std::string_view url) const;

    /// Asks on standard error. The line that was typed, trimmed; nothing at the end of input.
    std::optional<std::string> ask(std::string_view question) const;
    /// Asks until the answer is a number from 1 to `last`; nothing at the end of input.
    std::optional<std::size_t> askNumber(std::string_view question, std::size_t last) const;
    /// "heedbanner: TEXT" on standard error.
    void complain(std::string_view text) const;

  private:
    std::string styled(std::string_view text, std::string_view code) const;

    bool colors_ = false;
    bool trueColors_ = false;
    bool links_ = false;
};

}  // namespace hbr
