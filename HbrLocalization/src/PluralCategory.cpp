#include <HbrLocalization/PluralCategory.h>

#include <unicode/plurrule.h>

#include <map>
#include <memory>
#include <mutex>

namespace hbr {

namespace {

std::unique_ptr<const icu::PluralRules> makeRules(const std::string& language) {
    UErrorCode status = U_ZERO_ERROR;
    const auto locale = icu::Locale::forLanguageTag(language, status);
    std::unique_ptr<const icu::PluralRules> rules(icu::PluralRules::forLocale(locale, status));
    return U_SUCCESS(status) ? std::move(rules) : nullptr;
}

/// Kept for the life of the process: reading a language's rules takes far longer than applying them.
const icu::PluralRules* rulesOf(std::string_view language) {
    static std::mutex mutex;
    static auto& rules = *new std::map<std::string, std::unique_ptr<const icu::PluralRules>, std::less<>>;
    std::lock_guard lock(mutex);
    auto found = rules.find(language);
    if (found == rules.end()) {
        std::string name(language);
        auto made = makeRules(name);
        found = rules.emplace(std::move(name), std::move(made)).first;
    }
    return found->second.get();
}

}  // namespace

std::string pluralCategory(std::string_view language, std::int64_t count) {
    const auto* rules = rulesOf(language);
    if (!rules) return "other";
    std::string category;
    rules->select(static_cast<double>(count)).toUTF8String(category);
    return category;
}

}  // namespace hbr
