#include <HbrUtils/Prefixes.h>

namespace hbr {

std::string_view removingLeadingHash(std::string_view text) {
    return deletingPrefix(text, "#");
}

std::string_view deletingPrefix(std::string_view text, std::string_view prefix) {
    if (text.starts_with(prefix)) text.remove_prefix(prefix.size());
    return text;
}

}  // namespace hbr
