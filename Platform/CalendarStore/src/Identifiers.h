#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// 64-bit FNV-1a.
std::uint64_t fnv1a(std::string_view bytes, std::uint64_t basis = 14695981039346656037ULL);

/// "account-path-1a2b3c4d": readable, and distinct by a hash of both where the readable part is not.
std::string calendarIdentifier(std::string_view accountName, std::string_view collectionPath);
/// 32 hexadecimal digits, the same for all occurrences of a series.
std::string eventIdentifier(std::string_view calendarIdentifier, std::string_view uid);

}  // namespace platform
