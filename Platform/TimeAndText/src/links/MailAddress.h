#pragma once

#include <string_view>

namespace platform {

/// The local part of a mail address (RFC 5321, section 4.1.2) that ends a word before an "@"; empty when the
/// word does not end in one.
std::string_view localPartAtEnd(std::string_view word);

}  // namespace platform
