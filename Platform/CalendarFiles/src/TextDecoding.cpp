#include <CalendarFiles/TextDecoding.h>
#include <TimeAndText/Ascii.h>
#include <TimeAndText/Text.h>

#include <unicode/ucnv.h>
#include <unicode/utf8.h>

#include <cstdint>

namespace platform {
namespace {

bool holdsWholeCharacters(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    for (std::size_t at = 0; at < text.size();) {
        UChar32 character = 0;
        U8_NEXT(bytes, at, text.size(), character);
        if (character >= 0x80) return true;
    }
    return false;
}

/// What the set does not have becomes U+FFFD.
std::optional<std::string> converted(std::string_view text, UConverter* converter) {
    // No character needs more than three bytes of UTF-8 for its shortest form in another set.
    constexpr std::size_t mostBytes = 3;
    const auto shortest = static_cast<std::size_t>(ucnv_getMinCharSize(converter));
    std::string result((text.size() / shortest + 1) * mostBytes + 1, '\0');
    UErrorCode status = U_ZERO_ERROR;
    const auto size =
        ucnv_toAlgorithmic(UCNV_UTF8, converter, result.data(), static_cast<std::int32_t>(result.size()),
                           text.data(), static_cast<std::int32_t>(text.size()), &status);
    if (U_FAILURE(status)) return std::nullopt;
    result.resize(static_cast<std::size_t>(size));
    return result;
}

std::optional<std::string> converted(std::string_view text, const char* charset) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUConverterPointer converter(ucnv_open(charset, &status));
    return U_FAILURE(status) ? std::nullopt : converted(text, converter.getAlias());
}

std::string fromUtf16(std::string_view bytes, const char* charset) {
    return converted(bytes.substr(0, bytes.size() / 2 * 2), charset).value_or(std::string());
}

/// Sets that text is often said to be in although it is UTF-8 or Windows-1252.
bool isOftenSaidInError(const UConverter* converter) {
    const auto type = ucnv_getType(converter);
    if (type == UCNV_UTF8 || type == UCNV_LATIN_1 || type == UCNV_US_ASCII) return true;
    UErrorCode status = U_ZERO_ERROR;
    return ucnv_getCCSID(converter, &status) == 5348;  // Windows-1252
}

}  // namespace

std::string withoutUtf16(std::string bytes) {
    const std::string_view view = bytes;
    if (view.starts_with("\xEF\xBB\xBF")) return bytes.substr(3);
    if (view.starts_with("\xFF\xFE")) return fromUtf16(view.substr(2), "UTF-16LE");
    if (view.starts_with("\xFE\xFF")) return fromUtf16(view.substr(2), "UTF-16BE");
    if (view.size() >= 4 && view[0] != '\0' && view[1] == '\0' && view[2] != '\0' && view[3] == '\0') {
        return fromUtf16(view, "UTF-16LE");
    }
    if (view.size() >= 4 && view[0] == '\0' && view[1] != '\0' && view[2] == '\0' && view[3] != '\0') {
        return fromUtf16(view, "UTF-16BE");
    }
    return bytes;
}

std::string lineAsUtf8(std::string_view line) {
    if (isWellFormedUtf8(line)) return std::string(line);
    if (holdsWholeCharacters(line)) return sanitizedUtf8(line);
    return converted(line, "windows-1252").value_or(std::string());
}

std::optional<std::string> utf8FromCharset(std::string_view text, const std::string& charset) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUConverterPointer converter(ucnv_open(charset.c_str(), &status));
    if (U_FAILURE(status)) return std::nullopt;
    if (isOftenSaidInError(converter.getAlias())) return lineAsUtf8(text);
    return converted(text, converter.getAlias());
}

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
