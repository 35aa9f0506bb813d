#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Walks through the lines of a calendar or a card, folded ones joined. Line ends are CRLF or LF (CR alone
/// where the text has no LF).
class LogicalLines {
  public:
    static constexpr std::size_t maximumLength = std::size_t{1} << 20;
    struct Options {
        /// In bytes; a longer line is handed out cut off, with `tooLong()` set.
        std::size_t longest = maximumLength;
        /// A quoted-printable value goes on behind "=" at the end of a line, as the oldest cards have it.
        bool joinsSoftBreaks = false;
    };

    explicit LogicalLines(std::string_view text) : LogicalLines(text, Options()) {}
    LogicalLines(std::string_view text, Options options);

    /// False at the end. The line stays valid until the next call.
    bool next();
    std::string_view line() const { return line_; }
    /// Of the first physical line, counted from 1.
    int number() const { return number_; }
    bool tooLong() const { return tooLong_; }
    /// Where in the text the next line begins.
    std::size_t position() const { return size_ - rest_.size(); }

  private:
    std::string_view physicalLine();
    bool isSoftBreak();
    void append(std::string_view piece);

    Options options_;
    std::size_t size_ = 0;
    std::string_view rest_;
    char lineEnd_ = '\n';
    std::string_view line_;
    std::string joined_;
    int number_ = 0;
    int physicalLines_ = 0;
    bool tooLong_ = false;
    /// Of this line, once its name and parameters were read.
    std::optional<bool> isQuotedPrintable_;
    int headerSearches_ = 0;
};

}  // namespace platform
