#include <HbrLocalization/PluralCategory.h>

#include <unicode/plurrule.h>

#include <memory>

namespace hbr {

std::string pluralCategory(std::string_view language, std::int64_t count) {
    UErrorCode status = U_ZERO_ERROR;
    const auto locale =
        icu::Locale::forLanguageTag({language.data(), static_cast<int32_t>(language.size())}, status);
    const std::unique_ptr<icu::PluralRules> rules(icu::PluralRules::forLocale(locale, status));
    std::string category;
    if (U_FAILURE(status) || !rules) return "other";
    // Forms beyond 32 bits do not differ: the rules look at the last digits.
    rules->select(static_cast<int32_t>(count % 1'000'000'000)).toUTF8String(category);
    return category;
}

}  // namespace hbr
