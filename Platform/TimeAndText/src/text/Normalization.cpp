#include <TimeAndText/Ascii.h>
#include <TimeAndText/Normalization.h>

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>

namespace platform {

std::string canonicallyComposed(std::string_view text) {
    if (isAscii(text)) return std::string(text);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* composition = icu::Normalizer2::getNFCInstance(status);
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    if (U_SUCCESS(status)) {
        composition->normalizeUTF8(0, {text.data(), static_cast<std::int32_t>(text.size())}, sink, nullptr,
                                   status);
    }
    return U_SUCCESS(status) ? result : std::string(text);
}

}  // namespace platform
