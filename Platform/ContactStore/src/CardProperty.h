#pragma once

#include <CalendarFiles/ContentLine.h>

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// One line of a card with its value decoded: transfer encoding, character set, escapes. Points into the
/// line.
class CardProperty {
  public:
    explicit CardProperty(const ContentLine& content);

    /// Without the group in front ("item1.EMAIL").
    bool is(std::string_view upperName) const { return equalIgnoringCase(name_, upperName); }
    std::string_view name() const { return name_; }
    const ContentLine& content() const { return content_; }
    /// The value as one text.
    std::string text() const;
    /// The pieces between semicolons; lists inside a piece become words.
    std::vector<std::string> components() const;
    /// The pieces between commas.
    std::vector<std::string> list() const;
    /// 1 is the most wanted; what says nothing comes last.
    int preference() const;
    /// Named, and known.
    bool hasUnknownCharset() const;

  private:
    std::vector<std::string> pieces(char separator) const;
    std::string inUtf8(std::string_view bytes) const;

    ContentLine content_;
    std::string_view name_;
};

}  // namespace platform
