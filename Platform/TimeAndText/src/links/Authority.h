#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

// The parts of an authority, "user@host:port" (RFC 3986, section 3.2). Each function returns where its part
// ends, and its start when the part is absent.

/// Behind the "@".
std::size_t userInfoEnd(std::string_view text, std::size_t start);
/// A name, or an address in brackets such as "[2001:db8::1]".
std::size_t hostEnd(std::string_view text, std::size_t start);
/// `start`: the end of the host; a port is ":" and one to five digits.
std::size_t portEnd(std::string_view text, std::size_t start);

/// Whether a path, a query or a fragment begins here.
bool beginsPath(std::string_view text, std::size_t position);

}  // namespace platform
