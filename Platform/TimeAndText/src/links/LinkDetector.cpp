#include <TimeAndText/LinkDetector.h>

#include "links/LinkScanner.h"

namespace platform {

std::vector<DetectedLink> detectLinks(std::string_view text) {
    return LinkScanner(text).links();
}

std::vector<std::size_t> utf16Offsets(std::string_view text, const std::vector<std::size_t>& byteOffsets) {
    std::vector<std::size_t> result;
    result.reserve(byteOffsets.size());
    std::size_t byte = 0;
    std::size_t units = 0;
    for (const auto offset : byteOffsets) {
        for (; byte < offset && byte < text.size(); ++byte) {
            const auto value = static_cast<unsigned char>(text[byte]);
            // Continuation bytes add nothing; a lead byte of four adds the surrogate pair's second half.
            if ((value & 0xC0) != 0x80) ++units;
            if (value >= 0xF0) ++units;
        }
        result.push_back(units);
    }
    return result;
}

}  // namespace platform
