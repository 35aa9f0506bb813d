#include <TimeAndText/DurationFormatter.h>
#include <unicode/measfmt.h>
#include <unicode/measunit.h>
#include <unicode/measure.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <mutex>
#include <stdexcept>
#include <string_view>
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

/// Languages whose narrow amounts can be read at a glance. Others leave out the number of a day (Hebrew), use
/// letters of another language (Japanese) or single letters that no reader knows (Arabic, Dutch, Turkish).
constexpr std::array narrowLanguages{"en", "es", "fr", "it", "ko", "pt", "ru", "zh"};

UMeasureFormatWidth abbreviatedWidth(const icu::Locale& words) {
    return std::ranges::find(narrowLanguages, std::string_view(words.getLanguage())) != narrowLanguages.end()
               ? UMEASFMT_WIDTH_NARROW
               : UMEASFMT_WIDTH_SHORT;
}

}  // namespace

struct DurationFormatter::Engine {
    struct Step {
        Unit unit;
        bool isUsed;
        std::int64_t seconds;
    };
    struct Amount {
        Unit unit;
        std::int64_t count;
    };

    Calendar calendar;
    Configuration configuration;
    icu::MeasureFormat format;

    std::array<Step, 4> steps() const {
        return {Step{Unit::day, configuration.days, secondsPerDay},
                Step{Unit::hour, configuration.hours, 3600}, Step{Unit::minute, configuration.minutes, 60},
                Step{Unit::second, configuration.seconds, 1}};
    }

    /// `rest` stays in hours even where the clock's change makes it a day or more.
    std::optional<std::string> text(std::int64_t days, std::int64_t rest) const {
        std::vector<Amount> amounts;
        std::optional<Unit> smallest;
        const auto limit = static_cast<std::size_t>(std::max(configuration.maximumUnitCount, 0));
        for (const Step& step : steps()) {
            if (!step.isUsed) continue;
            smallest = step.unit;
            std::int64_t count = days;
            if (step.unit != Unit::day) {
                count = rest / step.seconds;
                rest %= step.seconds;
            }
            if (count != 0 && (limit == 0 || amounts.size() < limit)) amounts.push_back({step.unit, count});
        }
        if (!smallest) return std::nullopt;
        if (amounts.empty()) amounts.push_back({*smallest, 0});
        return configuration.words ? textOf(amounts, *configuration.words) : icuText(amounts);
    }

    static std::string textOf(const std::vector<Amount>& amounts, const Words& words) {
        std::string result;
        for (const Amount& amount : amounts) {
            const std::string text = words.amount(amount.unit, amount.count);
            result = result.empty() ? text : words.joined(result, text);
        }
        return result;
    }

    std::optional<std::string> icuText(const std::vector<Amount>& amounts) const {
        UErrorCode status = U_ZERO_ERROR;
        std::vector<icu::Measure> measures;
        for (const Amount& amount : amounts)
            measures.emplace_back(icu::Formattable(amount.count), icuUnit(amount.unit), status);
        icu::FieldPosition ignored(icu::FieldPosition::DONT_CARE);
        icu::UnicodeString result;
        format.formatMeasures(measures.data(), static_cast<std::int32_t>(measures.size()), result, ignored,
                              status);
        if (U_FAILURE(status)) return std::nullopt;
        return utf8(result);
    }

    /// For an icu::Measure, which adopts it.
    static icu::MeasureUnit* icuUnit(Unit unit) {
        switch (unit) {
            case Unit::day:
                return icu::MeasureUnit::getDay().clone();
            case Unit::hour:
                return icu::MeasureUnit::getHour().clone();
            case Unit::minute:
                return icu::MeasureUnit::getMinute().clone();
            case Unit::second:
                break;
        }
        return icu::MeasureUnit::getSecond().clone();
    }

    static icu::MeasureFormat makeFormat(const Locale& locale, UnitsStyle style) {
        const auto lock = constructionLock();
        UErrorCode status = U_ZERO_ERROR;
        const icu::Locale words = icuTextLocale(locale);
        icu::MeasureFormat format(
            words, style == UnitsStyle::full ? UMEASFMT_WIDTH_WIDE : abbreviatedWidth(words), status);
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
