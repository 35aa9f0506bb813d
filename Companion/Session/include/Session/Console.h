#pragma once

#include <Values/Color.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace hbr {

/// Where answers (standard output) and everything else (standard error) go. Colours and weights appear only
/// on a terminal that wants them.
class Console {
  public:
    /// The process's own streams.
    explicit Console(bool allowColors);

    std::ostream& out() const;
    std::ostream& err() const;
    /// True when a question can be asked: a person reads standard error and types on standard input.
    bool isInteractive() const;
    bool hasColors() const { return colors_; }
    /// Columns of the terminal that standard output is; nothing when it is none.
    std::optional<int> width() const;

    std::string bold(std::string_view text) const { return styled(text, "1"); }
    std::string faint(std::string_view text) const { return styled(text, "2"); }
    /// In 24 bits where the terminal says that it has them, else in the nearest of 256 colours.
    std::string colored(std::string_view text, const platform::Color& color) const;
    bool hasLinks() const { return links_; }
    /// Opens the address where it is clicked; the text alone where there are no such links.
    std::string linked(std::string_view text, std::string_view url) const;

    /// Asks on standard error; an empty answer means yes, the end of input no.
    bool confirm(std::string_view question) const;
    /// Asks on standard error; the line that was typed, trimmed, or nothing at the end of input.
    std::optional<std::string> ask(std::string_view question) const;
    /// Asks on standard error for a number from 1 to `last`; nothing at the end of input.
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
