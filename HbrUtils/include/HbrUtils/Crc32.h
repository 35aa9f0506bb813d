#pragma once

#include <cstdint>
#include <string_view>

namespace hbr {

/// zlib CRC-32, initial value 0, over the UTF-8 bytes.
std::uint32_t crc32(std::string_view text);

}  // namespace hbr
