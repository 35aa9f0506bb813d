#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Walks through the lines of a calendar text, folded ones joined. Line ends are CRLF or LF (CR alone where
/// the text has no LF).
class LogicalLines {
  public:
    /// A longer line is handed out cut off, with `tooLong()` set.
    static constexpr std::size_t maximumLength = std::size_t{1} << 20;

    explicit LogicalLines(std::string_view text);

    /// False at the end. The line stays valid until the next call.
    bool next();
    std::string_view line() const { return line_; }
    /// Of the first physical line, counted from 1.
    int number() const { return number_; }
    bool tooLong() const { return tooLong_; }

  private:
    std::string_view physicalLine();

    std::string_view rest_;
    char lineEnd_ = '\n';
    std::string_view line_;
    std::string joined_;
    int number_ = 0;
    int physicalLines_ = 0;
    bool tooLong_ = false;
};

}  // namespace platform
