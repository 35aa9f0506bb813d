#pragma once

#include "BracketPairs.h"

#include <cstddef>
#include <string_view>

namespace platform {

/// Where a link ends. RFC 3986 lets a URL hold most punctuation, but in a text some of it belongs to the
/// sentence, to brackets or quotes around the link, or to markup. The links of one text are asked in order.
class LinkEnd {
  public:
    explicit LinkEnd(std::string_view text) : text_(text), brackets_(text) {}

    /// Of a link whose host ends at `hostEnd`: with the port, and the path, query and fragment that follow.
    std::size_t afterHost(std::size_t linkStart, std::size_t hostEnd);
    /// Of a link without a host, whose scheme ends before `body`. Equal to `body` when nothing follows.
    std::size_t afterScheme(std::size_t linkStart, std::size_t body, bool isNumber);

  private:
    /// `tail`: what comes before it belongs to the link.
    std::size_t tailEnd(std::size_t linkStart, std::size_t tail);
    bool isAroundLink(std::size_t position, char beforeLink) const;
    bool isOutOfBalance(std::size_t position, BracketDepth& open);
    /// Start of another link that is glued to this one's tail and whose scheme ends at `colon`; `colon` when
    /// there is none.
    std::size_t startOfNextLink(std::size_t tail, std::size_t colon) const;
    std::size_t withoutTrailingPunctuation(std::size_t minimum, std::size_t end, char beforeLink) const;
    char before(std::size_t linkStart) const { return linkStart > 0 ? text_[linkStart - 1] : ' '; }

    std::string_view text_;
    BracketPairs brackets_;
};

}  // namespace platform
