#include <TimeAndText/Ascii.h>
#include <TimeAndText/Normalization.h>
#include <TimeAndText/Text.h>

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>
#include <zlib.h>

#include <memory>

namespace platform {
namespace {

icu::StringPiece piece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

/// Runs one of ICU's UTF-8 conversions; the text itself where it fails.
template <typename Convert>
std::string converted(std::string_view text, Convert convert) {
    std::string result;
    result.reserve(text.size());
    icu::StringByteSink<std::string> sink(&result);
    UErrorCode status = U_ZERO_ERROR;
    convert(piece(text), sink, status);
    return U_SUCCESS(status) ? result : std::string(text);
}

/// Without "\r\n", which is one character, every ASCII byte is a character of its own.
bool hasOneByteCharactersOnly(std::string_view text) {
    return isAscii(text) && text.find('\r') == std::string_view::npos;
}

/// Byte offset behind the first `limit` grapheme clusters, and how many there were up to there.
struct Clusters {
    std::size_t end = 0;
    std::size_t count = 0;
};

/// Calls `found` with the end of each grapheme cluster until it says false. False when the text cannot be
/// looked at.
template <class Found>
bool eachClusterEnd(std::string_view text, Found found) {
    // Making one takes longer than most texts; it must not be shared between threads.
    thread_local const std::unique_ptr<icu::BreakIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<icu::BreakIterator>(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    }();
    UErrorCode status = U_ZERO_ERROR;
    UText utf8 = UTEXT_INITIALIZER;
    utext_openUTF8(&utf8, text.data(), static_cast<std::int64_t>(text.size()), &status);
    if (!iterator || U_FAILURE(status)) return false;
    iterator->setText(&utf8, status);
    iterator->first();
    while (true) {
        const std::int32_t next = iterator->next();
        if (next == icu::BreakIterator::DONE || !found(static_cast<std::size_t>(next))) break;
    }
    utext_close(&utf8);
    return true;
}

Clusters clustersOf(std::string_view text, std::size_t limit) {
    Clusters clusters;
    if (limit == 0) return clusters;
    const bool isRead = eachClusterEnd(text, [&](std::size_t end) {
        clusters.end = end;
        return ++clusters.count < limit;
    });
    return isRead ? clusters : Clusters{text.size(), text.size()};
}

}  // namespace

bool isWellFormedUtf8(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    for (std::size_t at = 0; at < text.size();) {
        UChar32 character = 0;
        U8_NEXT(bytes, at, text.size(), character);
        if (character < 0) return false;
    }
    return true;
}

std::string sanitizedUtf8(std::string_view text) {
    if (isWellFormedUtf8(text)) return std::string(text);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::string result;
    result.reserve(text.size() + 8);
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t start = i;
        UChar32 character = 0;
        U8_NEXT(bytes, i, text.size(), character);
        if (character < 0) {
            result += "\xEF\xBF\xBD";
        } else {
            result += text.substr(start, i - start);
        }
    }
    return result;
}

std::string trimmed(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::size_t start = 0;
    for (std::size_t next = 0; next < text.size(); start = next) {
        UChar32 character = 0;
        U8_NEXT(bytes, next, text.size(), character);
        if (character < 0 || !u_isUWhiteSpace(character)) break;
    }
    auto end = static_cast<std::int32_t>(text.size());
    const auto first = static_cast<std::int32_t>(start);
    for (std::int32_t next = end; next > first; end = next) {
        UChar32 character = 0;
        U8_PREV(bytes, first, next, character);
        if (character < 0 || !u_isUWhiteSpace(character)) break;
    }
    return std::string(text.substr(start, static_cast<std::size_t>(end - first)));
}

std::string lowercased(std::string_view text) {
    if (isAscii(text)) {
        return asciiLower(text);
    }
    return converted(text, [](auto input, auto& sink, UErrorCode& status) {
        icu::CaseMap::utf8ToLower("", 0, input, sink, nullptr, status);
    });
}

std::string uppercased(std::string_view text, std::string_view localeIdentifier) {
    return converted(text, [&](auto input, auto& sink, UErrorCode& status) {
        icu::CaseMap::utf8ToUpper(std::string(localeIdentifier).c_str(), 0, input, sink, nullptr, status);
    });
}

std::string capitalizedFirstLetter(std::string_view text, std::string_view localeIdentifier) {
    return converted(text, [&](auto input, auto& sink, UErrorCode& status) {
        icu::CaseMap::utf8ToTitle(std::string(localeIdentifier).c_str(),
                                  U_TITLECASE_WHOLE_STRING | U_TITLECASE_NO_LOWERCASE, nullptr, input, sink,
                                  nullptr, status);
    });
}

std::size_t characterCount(std::string_view text) {
    if (hasOneByteCharactersOnly(text)) return text.size();
    return clustersOf(text, text.size()).count;
}

std::vector<std::size_t> characterBoundaries(std::string_view text) {
    std::vector<std::size_t> boundaries = {0};
    eachClusterEnd(text, [&](std::size_t end) {
        boundaries.push_back(end);
        return true;
    });
    if (boundaries.back() != text.size()) boundaries.push_back(text.size());
    return boundaries;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    if (count >= text.size() || hasOneByteCharactersOnly(text)) return text.substr(0, count);
    return text.substr(0, clustersOf(text, count).end);
}

bool canonicallyEqual(std::string_view a, std::string_view b) {
    if (a == b) return true;
    if (isAscii(a) && isAscii(b)) return false;
    return canonicallyDecomposed(a) == canonicallyDecomposed(b);
}

std::vector<std::string> split(std::string_view text, std::string_view separator, bool keepEmptyPieces) {
    std::vector<std::string> pieces;
    for (std::size_t start = 0;;) {
        const std::size_t end = separator.empty() ? std::string_view::npos : text.find(separator, start);
        const std::string_view piece = text.substr(start, end - start);
        if (keepEmptyPieces || !piece.empty()) pieces.emplace_back(piece);
        if (end == std::string_view::npos) return pieces;
        start = end + separator.size();
    }
}

std::vector<std::string> words(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::vector<std::string> found;
    std::size_t begin = 0;
    for (std::size_t next = 0; next < text.size();) {
        const std::size_t at = next;
        UChar32 character = 0;
        U8_NEXT(bytes, next, text.size(), character);
        if (character < 0 || !u_isUWhiteSpace(character)) continue;
        if (at > begin) found.emplace_back(text.substr(begin, at - begin));
        begin = next;
    }
    if (begin < text.size()) found.emplace_back(text.substr(begin));
    return found;
}

std::uint32_t crc32(std::string_view bytes) {
    // Without a pointer zlib answers with its initial value, which is 0 as well.
    return static_cast<std::uint32_t>(
        ::crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

}  // namespace platform
