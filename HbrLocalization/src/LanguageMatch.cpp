#include "LanguageMatch.h"

#include <unicode/localematcher.h>
#include <unicode/locid.h>

#include <algorithm>

namespace hbr {

namespace {

std::vector<icu::Locale> localesOf(const std::vector<std::string>& tags) {
    std::vector<icu::Locale> locales;
    for (const auto& tag : tags) {
        UErrorCode status = U_ZERO_ERROR;
        auto locale = icu::Locale::forLanguageTag(tag, status);
        // A place is kept for every tag, so that positions stay those of the tags.
        locales.push_back(U_SUCCESS(status) ? locale : icu::Locale::getRoot());
    }
    return locales;
}

}  // namespace

std::string bestLanguage(const std::vector<std::string>& wanted, const std::vector<std::string>& available) {
    const auto supported = localesOf(available);
    const auto desired = localesOf(wanted);
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::RangeIterator desiredRange(desired.begin(), desired.end());
    const auto matcher = icu::LocaleMatcher::Builder()
                             .setSupportedLocales(supported.begin(), supported.end())
                             .setNoDefaultLocale()
                             .build(status);
    const auto result = matcher.getBestMatchResult(desiredRange, status);
    const auto index = U_SUCCESS(status) ? result.getSupportedIndex() : -1;
    if (index >= 0) return available[static_cast<std::size_t>(index)];
    return std::ranges::find(available, "en") != available.end() ? "en" : "";
}

}  // namespace hbr
