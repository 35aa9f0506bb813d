#include <TimeAndText/RelativeDateTimeFormatter.h>
#include <unicode/gregocal.h>
#include <unicode/reldatefmt.h>

#include <array>
#include <stdexcept>

#include "DatePatterns.h"
#include "IcuLocale.h"
#include "IcuTimeZone.h"

namespace platform {

struct RelativeDateTimeFormatter::Engine {
    icu::RelativeDateTimeFormatter format;
    /// Cloned for each use: counting changes it.
    icu::GregorianCalendar calendar;
};

namespace {

struct Unit {
    UCalendarDateFields field;
    URelativeDateTimeUnit name;
};

constexpr std::array units{
    Unit{UCAL_YEAR, UDAT_REL_UNIT_YEAR},          Unit{UCAL_MONTH, UDAT_REL_UNIT_MONTH},
    Unit{UCAL_WEEK_OF_MONTH, UDAT_REL_UNIT_WEEK}, Unit{UCAL_DATE, UDAT_REL_UNIT_DAY},
    Unit{UCAL_HOUR_OF_DAY, UDAT_REL_UNIT_HOUR},   Unit{UCAL_MINUTE, UDAT_REL_UNIT_MINUTE},
    Unit{UCAL_SECOND, UDAT_REL_UNIT_SECOND},
};

}  // namespace

RelativeDateTimeFormatter::RelativeDateTimeFormatter(const Locale& locale, const Calendar& calendar) {
    const auto lock = constructionLock();
    const icu::Locale icu = icuTextLocale(locale);
    UErrorCode status = U_ZERO_ERROR;
    engine_ = std::make_shared<const Engine>(Engine{
        icu::RelativeDateTimeFormatter(icu, nullptr, UDAT_STYLE_LONG, UDISPCTX_CAPITALIZATION_NONE, status),
        icu::GregorianCalendar(new IcuTimeZone(calendar.timeZone()), icu, status)});
    if (U_FAILURE(status)) throw std::runtime_error("no texts of distances in time");
}

std::string RelativeDateTimeFormatter::string(Date date, Date relativeTo) const {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Calendar> calendar(engine_->calendar.clone());
    calendar->setTime(icuDate(relativeTo), status);
    Unit unit = units.back();
    std::int32_t count = 0;
    for (const Unit& candidate : units) {
        count = calendar->fieldDifference(icuDate(date), candidate.field, status);
        if (count != 0) {
            unit = candidate;
            break;
        }
    }
    // Less than a second ago is negative zero: the sign chooses the wording.
    const double number = count == 0 && date < relativeTo ? -0.0 : count;
    icu::UnicodeString text;
    engine_->format.formatNumeric(number, unit.name, text, status);
    return utf8(text);
}

}  // namespace platform
