#pragma once

#include "LinkEnd.h"
#include "LinkWord.h"

#include <TimeAndText/LinkDetector.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

/// One pass over one text, from mark to mark: every link has a ".", ":" or "@" near its beginning. Every byte
/// is read a bounded number of times, whatever the text: the word around a mark is judged as a whole and
/// then passed, and a link's end is found without going back.
class LinkScanner {
  public:
    explicit LinkScanner(std::string_view text) : text_(text), linkEnd_(text) {}
    std::vector<DetectedLink> links();

  private:
    std::size_t nextMark(std::size_t from) const;
    std::optional<DetectedLink> linkAt(LinkWord word);
    std::optional<DetectedLink> linkWithScheme(LinkWord word);
    std::optional<DetectedLink> webLink(std::size_t start, std::size_t authority);
    std::optional<DetectedLink> mailAddress(LinkWord word) const;
    std::optional<DetectedLink> bareHost(LinkWord word);

    std::string_view text_;
    LinkEnd linkEnd_;
};

}  // namespace platform
