#include <HbrUtils/Crc32.h>

#include <TimeAndText/Text.h>

namespace hbr {

std::uint32_t crc32(std::string_view text) {
    return platform::crc32(text);
}

}  // namespace hbr
