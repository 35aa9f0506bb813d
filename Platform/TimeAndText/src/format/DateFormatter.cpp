#include <TimeAndText/DateFormatter.h>
#include <TimeAndText/RelativeDateTimeFormatter.h>
#include <unicode/reldatefmt.h>

#include <array>
#include <stdexcept>

#include "DatePatterns.h"
#include "IcuLocale.h"
#include "IcuTimeZone.h"

namespace platform {

/// One format, and for the relative form one more for each day that has a word. ICU documents formatting
/// with an unchanged SimpleDateFormat as reading only.
struct DateFormatter::Engine {
    static constexpr int wordsReach = 2;  // days to either side

    Calendar calendar;
    std::unique_ptr<const icu::DateFormat> plain;
    std::array<std::unique_ptr<const icu::DateFormat>, 2 * wordsReach + 1> byDay{};

    const icu::DateFormat& formatFor(Date date, Date now) const {
        if (!byDay[wordsReach]) return *plain;
        const int days = calendar.daysBetween(now, date);
        if (days < -wordsReach || days > wordsReach) return *plain;
        const auto& withWord = byDay[static_cast<std::size_t>(days + wordsReach)];
        return withWord ? *withWord : *plain;
    }
};

namespace {

icu::UnicodeString joined(icu::UnicodeString glue, const icu::UnicodeString& date,
                          const icu::UnicodeString& time) {
    return glue.findAndReplace(u"{1}", date).findAndReplace(u"{0}", time);
}

icu::UnicodeString quoted(icu::UnicodeString text) {
    return u"'" + text.findAndReplace(u"'", u"''") + u"'";
}

/// Empty where the locale has no word for that day.
icu::UnicodeString dayWord(const icu::RelativeDateTimeFormatter& words, int days) {
    constexpr std::array directions{UDAT_DIRECTION_LAST_2, UDAT_DIRECTION_LAST, UDAT_DIRECTION_THIS,
                                    UDAT_DIRECTION_NEXT, UDAT_DIRECTION_NEXT_2};
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString word;
    words.format(directions.at(static_cast<std::size_t>(days + 2)), UDAT_ABSOLUTE_DAY, word, status);
    return U_SUCCESS(status) ? word : icu::UnicodeString();
}

}  // namespace

DateFormatter DateFormatter::withStyles(const Locale& locale, const Calendar& calendar, Style date,
                                        Style time) {
    const auto lock = constructionLock();
    const icu::Locale icu = icuLocale(locale);
    const auto pattern =
        date == Style::none && time == Style::short_ ? shortTimePattern(icu) : stylePattern(icu, date, time);
    return DateFormatter(
        std::make_shared<const Engine>(Engine{calendar, patternFormat(icu, calendar.timeZone(), pattern)}));
}

DateFormatter DateFormatter::withTemplate(const Locale& locale, const Calendar& calendar,
                                          std::string_view skeleton) {
    const auto lock = constructionLock();
    const icu::Locale icu = icuLocale(locale);
    return DateFormatter(std::make_shared<const Engine>(
        Engine{calendar, patternFormat(icu, calendar.timeZone(), skeletonPattern(icu, skeleton))}));
}

DateFormatter DateFormatter::withPattern(const Locale& locale, const Calendar& calendar,
                                         std::string_view pattern) {
    const auto lock = constructionLock();
    const auto icuPattern = icu::UnicodeString::fromUTF8(std::string(pattern));
    return DateFormatter(std::make_shared<const Engine>(
        Engine{calendar, patternFormat(icuLocale(locale), calendar.timeZone(), icuPattern)}));
}

// ICU's own relative date format reads the clock itself and must not be shared between threads. A day's word
// is part of a text, so it and what joins it to the time come from the language of texts.
DateFormatter DateFormatter::relativeDateAndTime(const Locale& locale, const Calendar& calendar) {
    const auto lock = constructionLock();
    const icu::Locale icu = icuLocale(locale);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale language = icuTextLocale(locale);
    const icu::RelativeDateTimeFormatter words(language, nullptr, UDAT_STYLE_LONG,
                                               UDISPCTX_CAPITALIZATION_FOR_MIDDLE_OF_SENTENCE, status);
    if (U_FAILURE(status)) throw std::runtime_error("no words for days");
    const icu::UnicodeString glue = dateTimeGlue(language);
    const icu::UnicodeString time = shortTimePattern(icu);
    const icu::UnicodeString date = stylePattern(icu, Style::medium, Style::none);

    Engine engine{calendar, patternFormat(icu, calendar.timeZone(), joined(dateTimeGlue(icu), date, time))};
    for (int days = -Engine::wordsReach; days <= Engine::wordsReach; ++days) {
        const icu::UnicodeString word = dayWord(words, days);
        if (word.isEmpty()) continue;
        engine.byDay.at(static_cast<std::size_t>(days + Engine::wordsReach)) =
            patternFormat(icu, calendar.timeZone(), joined(glue, quoted(word), time));
    }
    return DateFormatter(std::make_shared<const Engine>(std::move(engine)));
}

std::string DateFormatter::string(Date date, Date now) const {
    icu::UnicodeString text;
    return utf8(engine_->formatFor(date, now).format(icuDate(date), text));
}

}  // namespace platform
