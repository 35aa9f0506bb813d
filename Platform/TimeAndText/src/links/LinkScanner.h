#pragma once

#include <TimeAndText/LinkDetector.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

/// One pass over one text, from mark to mark: every link has a ".", ":" or "@" near its beginning. Every byte
/// is looked at a bounded number of times, whatever the text: the word around a mark is judged as a whole and
/// then left behind, and the extent of a link is found without going back.
class LinkScanner {
  public:
    explicit LinkScanner(std::string_view text) : text_(text) {}
    std::vector<DetectedLink> links();

  private:
    /// A run of letters, digits, ".", "-", "_" and "+"; it ends where ASCII and another script touch.
    struct Word {
        std::size_t start = 0;
        std::size_t end = 0;
    };

    std::size_t nextMark(std::size_t from) const;
    std::size_t wordStart(std::size_t end, std::size_t earliest) const;
    std::size_t wordEnd(std::size_t start) const;
    std::optional<DetectedLink> linkAt(Word word);
    std::optional<DetectedLink> linkWithScheme(Word word);
    std::optional<DetectedLink> webLink(std::size_t start, std::size_t authority);
    std::optional<DetectedLink> mailAddress(Word word) const;
    std::optional<DetectedLink> bareHost(Word word);

    /// End of the host that begins at `start`; equal to `start` when none does.
    std::size_t hostEnd(std::size_t start) const;
    std::size_t portEnd(std::size_t hostEnd) const;
    std::size_t userInfoEnd(std::size_t start) const;
    /// Where the link that began at `linkStart` ends, when all before `position` belongs to it.
    std::size_t tailEnd(std::size_t linkStart, std::size_t position);
    /// Start of the link whose scheme ends at `colon`, glued to one whose tail begins at `earliest`; `colon`
    /// when it belongs to that one.
    std::size_t startOfAnotherLink(std::size_t earliest, std::size_t colon) const;
    bool beginsWebAddress(std::size_t position) const;
    bool beginsWww(std::size_t position) const;
    bool isClosedLater(std::size_t bracket);
    void matchBrackets(std::size_t from);
    std::size_t withoutTrailingPunctuation(std::size_t linkStart, std::size_t minimum, std::size_t end) const;
    bool isAt(std::size_t position, std::string_view piece) const {
        return position < text_.size() && text_.substr(position, piece.size()) == piece;
    }

    std::string_view text_;
    /// Opening brackets of the stretch without white space that ends at matchedUntil_, which have a partner.
    std::vector<std::size_t> closedBrackets_;
    std::size_t nextClosedBracket_ = 0;
    std::size_t matchedUntil_ = 0;
};

}  // namespace platform
