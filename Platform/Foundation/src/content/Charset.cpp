#include <Foundation/ContentLine.h>
#include <Foundation/TextDecoding.h>
#include <unicode/ucnv.h>

#include <array>
#include <memory>

namespace platform {
namespace {

constexpr std::array<std::string_view, 7> readAsItComes = {"UTF-8",    "UTF8",      "ISO-8859-1",  "LATIN1",
                                                           "US-ASCII", "ISO8859-1", "WINDOWS-1252"};

struct CloseConverter {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};

}  // namespace

std::optional<std::string> utf8FromCharset(std::string_view text, const std::string& charset) {
    for (const auto known : readAsItComes) {
        if (equalIgnoringCase(known, charset)) return lineAsUtf8(text);
    }
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, CloseConverter> converter(ucnv_open(charset.c_str(), &status));
    if (!converter || U_FAILURE(status)) return std::nullopt;
    // No character set needs more than three bytes of UTF-8 for one of its own.
    std::string result(text.size() * 3 + 4, '\0');
    const auto size = ucnv_toAlgorithmic(UCNV_UTF8, converter.get(), result.data(),
                                         static_cast<std::int32_t>(result.size()), text.data(),
                                         static_cast<std::int32_t>(text.size()), &status);
    if (U_FAILURE(status)) return std::nullopt;
    result.resize(static_cast<std::size_t>(size));
    return result;
}

}  // namespace platform
