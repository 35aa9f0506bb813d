#include "DatePatterns.h"

#include <unicode/dtptngen.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

#include "IcuTimeZone.h"

namespace platform {
namespace {

using Style = DateFormatter::Style;

void require(UErrorCode status, const char* what) {
    if (U_FAILURE(status)) throw std::runtime_error(std::string(what) + ": " + u_errorName(status));
}

icu::DateFormat::EStyle icuStyle(Style style) {
    switch (style) {
        case Style::none:
            return icu::DateFormat::kNone;
        case Style::short_:
            return icu::DateFormat::kShort;
        case Style::medium:
            return icu::DateFormat::kMedium;
        case Style::long_:
            return icu::DateFormat::kLong;
    }
    return icu::DateFormat::kNone;
}

icu::UnicodeString icuStylePattern(const icu::Locale& locale, Style date, Style time) {
    const std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createDateTimeInstance(icuStyle(date), icuStyle(time), locale));
    const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format.get());
    if (!simple) throw std::runtime_error("no date formats for the locale " + std::string(locale.getName()));
    icu::UnicodeString pattern;
    return simple->toPattern(pattern);
}

/// The pattern without its quoted words ("H 'h' mm").
icu::UnicodeString fieldsOf(const icu::UnicodeString& pattern) {
    icu::UnicodeString fields;
    bool isQuoted = false;
    for (int32_t i = 0; i < pattern.length(); ++i) {
        if (pattern[i] == u'\'')
            isQuoted = !isQuoted;
        else if (!isQuoted)
            fields += pattern[i];
    }
    return fields;
}

/// Whether the pattern counts hours otherwise than the locale's "hours" keyword wants them.
bool hasOtherHours(const icu::UnicodeString& timePattern, const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    const auto wanted = locale.getKeywordValue<std::string>("hours", status);
    if (U_FAILURE(status)) return false;
    constexpr std::pair<const char*, char16_t> letters[] = {
        {"h11", u'K'}, {"h12", u'h'}, {"h23", u'H'}, {"h24", u'k'}};
    const auto* found = std::ranges::find(letters, wanted, &std::pair<const char*, char16_t>::first);
    return found != std::end(letters) && fieldsOf(timePattern).indexOf(found->second) < 0;
}

}  // namespace

std::unique_lock<std::mutex> constructionLock() {
    static std::mutex mutex;
    return std::unique_lock(mutex);
}

icu::UnicodeString shortTimePattern(const icu::Locale& locale) {
    icu::UnicodeString pattern = icuStylePattern(locale, Style::none, Style::short_);
    return hasOtherHours(pattern, locale) ? skeletonPattern(locale, "jmm") : pattern;
}

icu::UnicodeString stylePattern(const icu::Locale& locale, Style date, Style time) {
    icu::UnicodeString pattern = icuStylePattern(locale, date, time);
    if (time == Style::none) return pattern;
    const icu::UnicodeString own = icuStylePattern(locale, Style::none, time);
    if (!hasOtherHours(own, locale)) return pattern;
    return pattern.findAndReplace(own, skeletonPattern(locale, time == Style::short_ ? "jmm" : "jmmss"));
}

icu::UnicodeString skeletonPattern(const icu::Locale& locale, std::string_view skeleton) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(locale, status));
    require(status, "no date patterns");
    icu::UnicodeString pattern =
        generator->getBestPattern(icu::UnicodeString::fromUTF8(std::string(skeleton)), status);
    require(status, "no pattern for a date");
    return pattern;
}

icu::UnicodeString dateTimeGlue(const icu::Locale& locale) {
    icu::UnicodeString glue = icuStylePattern(locale, Style::medium, Style::short_);
    const icu::UnicodeString date = icuStylePattern(locale, Style::medium, Style::none);
    const icu::UnicodeString time = icuStylePattern(locale, Style::none, Style::short_);
    if (glue.indexOf(date) >= 0 && glue.indexOf(time) >= 0) {
        return glue.findAndReplace(date, u"{1}").findAndReplace(time, u"{0}");
    }
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(locale, status));
    require(status, "no date patterns");
    glue = generator->getDateTimeFormat(UDAT_MEDIUM, status);
    require(status, "no pattern for a date with a time");
    return glue;
}

std::unique_ptr<const icu::DateFormat> patternFormat(const icu::Locale& locale, const TimeZone& zone,
                                                     const icu::UnicodeString& pattern) {
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(pattern, locale, status);
    require(status, "no date format");
    format->adoptTimeZone(new IcuTimeZone(zone));
    return format;
}

}  // namespace platform
