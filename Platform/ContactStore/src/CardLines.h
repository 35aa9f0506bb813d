#pragma once

#include <CalendarFiles/ContentLine.h>
#include <CalendarFiles/LogicalLines.h>

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Walks through the lines of cards: folded ones, soft breaks of quoted-printable and the lines of a base64
/// value, which the oldest cards do not fold, are joined.
class CardLines {
  public:
    /// Base64 of the largest picture that is taken, 10 MB.
    static constexpr std::size_t longestLine = std::size_t{14} << 20;

    explicit CardLines(std::string_view text)
        : lines_(text, {.longest = longestLine, .joinsSoftBreaks = true}) {}

    /// False at the end. The line stays valid until the next call.
    bool next();
    std::string_view line() const { return line_; }
    /// Nothing for a line that is not a property.
    const std::optional<ContentLine>& content() const { return content_; }
    int number() const { return number_; }
    bool tooLong() const { return tooLong_; }
    /// Where in the text the line begins, and where the next one does.
    std::size_t begin() const { return begin_; }
    std::size_t end() const { return end_; }

  private:
    void joinBase64();

    LogicalLines lines_;
    /// A line that was read to see whether it goes on with the one before.
    bool hasPending_ = false;
    std::string_view line_;
    std::optional<ContentLine> content_;
    std::string joined_;
    int number_ = 0;
    bool tooLong_ = false;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

/// Whether the value is base64 by the line's own words ("ENCODING=b", "ENCODING=BASE64", "BASE64").
bool isBase64(const ContentLine& content);
bool isQuotedPrintable(const ContentLine& content);

}  // namespace platform
