#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The parts of a URL that differ in which characters are valid in them (RFC 3986).
enum class UrlPart { userInfo, host, path, query, fragment };

/// Whether the byte is valid there as it is; "%" is not.
bool mayStandIn(UrlPart part, char byte);

/// Whether text[at] is "%" with two hexadecimal digits after it.
bool isPercentTriplet(std::string_view text, std::size_t at);

void appendPercentEncoded(std::string& target, char byte);

/// Encodes what is not valid there; `keepTriplets` leaves what is encoded already.
void appendEncoded(std::string& target, std::string_view text, UrlPart part, bool keepTriplets);

}  // namespace platform
