#include <HbrUtils/Prefixes.h>

#include <TimeAndText/Text.h>

namespace hbr {

std::string_view deletingPrefix(std::string_view text, std::string_view prefix) {
    const auto head = platform::firstCharacters(text, platform::characterCount(prefix));
    return platform::canonicallyEqual(head, prefix) ? text.substr(head.size()) : text;
}

}  // namespace hbr
