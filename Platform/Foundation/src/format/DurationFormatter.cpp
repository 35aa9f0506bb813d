#include <Foundation/FormatEngines.h>
#include <unicode/measfmt.h>
#include <unicode/measunit.h>
#include <unicode/measure.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <mutex>
#include <stdexcept>
#include <vector>

#include "DatePatterns.h"
#include "IcuLocale.h"
#include "IcuTimeZone.h"

namespace platform {
namespace {

constexpr std::int64_t secondsPerDay = 86400;

/// Whole seconds, cut off towards zero; beyond 30 million years held there.
std::int64_t wholeSeconds(double seconds) {
    constexpr double furthest = 1e15;
    return static_cast<std::int64_t>(std::clamp(seconds, -furthest, furthest));
}

struct Split {
    std::int64_t days = 0;
    double seconds = 0;
};

/// Whole days by the wall clock, and what remains; both have the sign of the distance.
Split splitByCalendar(const Calendar& calendar, Date from, Date to) {
    int days = calendar.daysBetween(from, to);
    Date reached = calendar.addingDays(from, days);
    if (days > 0 && reached > to) reached = calendar.addingDays(from, --days);
    if (days < 0 && reached < to) reached = calendar.addingDays(from, ++days);
    return {days, to.timeIntervalSince(reached)};
}

}  // namespace

struct DurationFormatter::Engine {
    struct Unit {
        bool isUsed;
        std::int64_t seconds;
        icu::MeasureUnit (*icuUnit)();
    };

    Calendar calendar;
    Configuration configuration;
    icu::MeasureFormat format;

    std::array<Unit, 4> units() const {
        return {Unit{configuration.days, secondsPerDay, icu::MeasureUnit::getDay},
                Unit{configuration.hours, 3600, icu::MeasureUnit::getHour},
                Unit{configuration.minutes, 60, icu::MeasureUnit::getMinute},
                Unit{configuration.seconds, 1, icu::MeasureUnit::getSecond}};
    }

    /// `rest` stays in hours even where the clock's change makes it a day or more.
    std::optional<std::string> text(std::int64_t days, std::int64_t rest) const {
        std::vector<icu::Measure> measures;
        std::optional<icu::MeasureUnit> smallest;
        const auto limit = static_cast<std::size_t>(std::max(configuration.maximumUnitCount, 0));
        for (const Unit& unit : units()) {
            if (!unit.isUsed) continue;
            smallest = unit.icuUnit();
            std::int64_t count = days;
            if (unit.seconds != secondsPerDay) {
                count = rest / unit.seconds;
                rest %= unit.seconds;
            }
            if (count != 0 && (limit == 0 || measures.size() < limit)) {
                append(measures, count, *smallest);
            }
        }
        if (!smallest) return std::nullopt;
        if (measures.empty()) append(measures, 0, *smallest);

        UErrorCode status = U_ZERO_ERROR;
        icu::FieldPosition ignored(icu::FieldPosition::DONT_CARE);
        icu::UnicodeString result;
        format.formatMeasures(measures.data(), static_cast<std::int32_t>(measures.size()), result, ignored,
                              status);
        if (U_FAILURE(status)) return std::nullopt;
        return utf8(result);
    }

    static void append(std::vector<icu::Measure>& measures, std::int64_t count,
                       const icu::MeasureUnit& unit) {
        UErrorCode status = U_ZERO_ERROR;
        measures.emplace_back(icu::Formattable(count), unit.clone(), status);
    }

    static icu::MeasureFormat makeFormat(const Locale& locale, UnitsStyle style) {
        const auto lock = constructionLock();
        UErrorCode status = U_ZERO_ERROR;
        icu::MeasureFormat format(icuTextLocale(locale),
                                  style == UnitsStyle::full ? UMEASFMT_WIDTH_WIDE : UMEASFMT_WIDTH_NARROW,
                                  status);
        if (U_FAILURE(status)) throw std::runtime_error("no texts of durations");
        return format;
    }
};

DurationFormatter::DurationFormatter(const Locale& locale, const Calendar& calendar,
                                     Configuration configuration)
    : engine_(std::make_shared<const Engine>(
          Engine{calendar, configuration, Engine::makeFormat(locale, configuration.style)})) {}

std::optional<std::string> DurationFormatter::string(double seconds) const {
    if (!std::isfinite(seconds)) return std::nullopt;
    const std::int64_t whole = wholeSeconds(seconds);
    if (!engine_->configuration.days) return engine_->text(0, whole);
    return engine_->text(whole / secondsPerDay, whole % secondsPerDay);
}

std::optional<std::string> DurationFormatter::string(Date from, Date to) const {
    const double elapsed = to.timeIntervalSince(from);
    if (!engine_->configuration.days || !std::isfinite(elapsed)) return string(elapsed);
    const Split split = splitByCalendar(engine_->calendar, from, to);
    return engine_->text(split.days, wholeSeconds(split.seconds));
}

}  // namespace platform
