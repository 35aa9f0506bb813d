#include <TimeAndText/Ascii.h>
#include <TimeAndText/Normalization.h>

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/utf8.h>

namespace platform {

namespace {

/// Sorting the marks above a letter takes the square of their number. No language writes so many; those
/// beyond are sorted by themselves, as in Unicode's Stream-Safe Text Format.
constexpr int mostMarks = 30;

/// Where the first piece without too many marks in a row ends.
std::size_t endOfPiece(std::string_view text, const icu::Normalizer2& form) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    int marks = 0;
    for (std::int32_t i = 0; i < size;) {
        UChar32 character = 0;
        U8_NEXT_OR_FFFD(bytes, i, size, character);
        marks = form.getCombiningClass(character) == 0 ? 0 : marks + 1;
        if (marks == mostMarks) return static_cast<std::size_t>(i);
    }
    return text.size();
}

std::string normalized(std::string_view text, const icu::Normalizer2* form, UErrorCode status) {
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    for (std::string_view rest = text; !rest.empty() && U_SUCCESS(status);) {
        const std::size_t end = endOfPiece(rest, *form);
        form->normalizeUTF8(0, {rest.data(), static_cast<std::int32_t>(end)}, sink, nullptr, status);
        rest.remove_prefix(end);
    }
    return U_SUCCESS(status) ? result : std::string(text);
}

}  // namespace

std::string canonicallyComposed(std::string_view text) {
    if (isAscii(text)) return std::string(text);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* form = icu::Normalizer2::getNFCInstance(status);
    return normalized(text, form, status);
}

std::string canonicallyDecomposed(std::string_view text) {
    if (isAscii(text)) return std::string(text);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* form = icu::Normalizer2::getNFDInstance(status);
    return normalized(text, form, status);
}

}  // namespace platform
