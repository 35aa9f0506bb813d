#include <Foundation/Ascii.h>
#include <Foundation/TextDecoding.h>

namespace platform {
std::string decodedQuotedPrintable(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '=' && i + 2 < text.size() ? hexDigitValue(text[i + 1]) : -1;
        const int low = high >= 0 ? hexDigitValue(text[i + 2]) : -1;
        if (low < 0) {
            bytes += text[i];
            continue;
        }
        bytes += static_cast<char>(static_cast<unsigned char>(high * 16 + low));
        i += 2;
    }
    return bytes;
}

}  // namespace platform
