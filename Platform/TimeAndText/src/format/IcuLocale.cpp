#include "IcuLocale.h"

#include <unicode/numsys.h>
#include <unicode/unistr.h>
#include <unicode/ures.h>

#include <cstring>
#include <memory>

namespace platform {
namespace {

bool hasData(const icu::Locale& locale) {
    if (locale.isBogus() || !*locale.getLanguage()) return false;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UResourceBundle, decltype(&ures_close)> bundle(
        ures_open(nullptr, locale.getBaseName(), &status), ures_close);
    return U_SUCCESS(status) && status != U_USING_DEFAULT_WARNING;
}

/// Whether `wanted` says nothing that `formats` does not say as well ("pt" and "pt_BR").
bool isCoveredBy(const icu::Locale& formats, const icu::Locale& wanted) {
    const auto agrees = [](const char* part, const char* whole) {
        return !*part || std::strcmp(part, whole) == 0;
    };
    return std::strcmp(wanted.getLanguage(), formats.getLanguage()) == 0 &&
           agrees(wanted.getScript(), formats.getScript()) &&
           agrees(wanted.getCountry(), formats.getCountry());
}

std::unique_ptr<const icu::NumberingSystem> numbersOf(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<const icu::NumberingSystem> numbers(icu::NumberingSystem::createInstance(locale, status));
    return U_SUCCESS(status) && !numbers->isAlgorithmic() && numbers->getRadix() == 10 ? std::move(numbers)
                                                                                       : nullptr;
}

}  // namespace

icu::Locale icuLocale(const Locale& locale) {
    return icu::Locale(locale.identifier.c_str());
}

icu::Locale icuTextLocale(const Locale& locale) {
    icu::Locale formats = icuLocale(locale);
    for (const std::string& tag : locale.languages) {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale words = icu::Locale::forLanguageTag(tag, status);
        if (U_FAILURE(status) || !hasData(words)) continue;
        if (isCoveredBy(formats, words)) return formats;
        if (const auto numbers = numbersOf(formats))
            words.setKeywordValue("numbers", numbers->getName(), status);
        return words;
    }
    return formats;
}

bool isRightToLeftLanguage(std::string_view tag) {
    UErrorCode status = U_ZERO_ERROR;
    const auto language = icu::Locale::forLanguageTag({tag.data(), static_cast<int32_t>(tag.size())}, status);
    return U_SUCCESS(status) && language.isRightToLeft();
}

std::string withLocalDigits(std::string_view text, const Locale& locale) {
    const auto numbers = numbersOf(icuLocale(locale));
    if (!numbers || std::strcmp(numbers->getName(), "latn") == 0) return std::string(text);
    const icu::UnicodeString digits = numbers->getDescription();
    std::string result;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            result += c;
            continue;
        }
        const int32_t start = digits.moveIndex32(0, c - '0');
        digits.tempSubStringBetween(start, digits.moveIndex32(start, 1)).toUTF8String(result);
    }
    return result;
}

}  // namespace platform
