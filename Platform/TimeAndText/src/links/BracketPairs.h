#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace platform {

inline bool isOpeningBracket(char c) {
    return c == '(' || c == '[';
}
inline bool isClosingBracket(char c) {
    return c == ')' || c == ']';
}

/// How many round and square brackets are open.
struct BracketDepth {
    std::size_t round = 0;
    std::size_t square = 0;

    std::size_t& of(char bracket) { return bracket == '(' || bracket == ')' ? round : square; }
};

/// Which opening brackets of a text are closed before the next character that ends links. Each stretch
/// between such characters is matched once.
class BracketPairs {
  public:
    explicit BracketPairs(std::string_view text) : text_(text) {}

    /// `bracket`: offset of an opening bracket; ascending from call to call.
    bool isClosed(std::size_t bracket);

  private:
    void match(std::size_t from);

    std::string_view text_;
    /// Of the stretch that ends at matchedUntil_, sorted.
    std::vector<std::size_t> closed_;
    std::size_t next_ = 0;
    std::size_t matchedUntil_ = 0;
};

}  // namespace platform
