#include "MailAddress.h"

#include <TimeAndText/Ascii.h>

namespace platform {

namespace {

/// Twice what RFC 5321, section 4.5.3.1.1, allows.
constexpr std::size_t longestLocalPart = 128;

}  // namespace

std::string_view localPartAtEnd(std::string_view word) {
    if (word.ends_with('.')) return {};
    if (const auto gap = word.rfind(".."); gap != std::string_view::npos) word.remove_prefix(gap + 2);
    while (!word.empty() && isAscii(word.front()) && !isAsciiAlphanumeric(word.front()) &&
           word.front() != '_')
        word.remove_prefix(1);
    return word.size() <= longestLocalPart ? word : std::string_view();
}

}  // namespace platform
