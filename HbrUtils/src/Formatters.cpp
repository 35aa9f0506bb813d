#include <HbrUtils/Formatters.h>

#include <HbrLocalization/L10n.h>
#include <HbrLocalization/LocalizedString.h>

#include <mutex>
#include <optional>

namespace hbr {

using platform::DateFormatter;
using platform::DurationFormatter;
using Style = DateFormatter::Style;
using Units = DurationFormatter::UnitsStyle;

namespace {

/// Made by the first thread that asks, while others wait.
template <typename T>
class Lazy {
  public:
    template <typename Make>
    const T& get(Make make) const {
        std::call_once(once_, [&] { value_.emplace(make()); });
        return *value_;
    }

  private:
    mutable std::once_flag once_;
    mutable std::optional<T> value_;
};

/// The abbreviations of the string table; nothing when its language leaves them to ICU.
std::optional<DurationFormatter::Words> wordsOfAmounts(const platform::Environment* environment) {
    if (!hasLocalizedText(*environment, "Amount.days")) return std::nullopt;
    const auto amount = [environment](DurationFormatter::Unit unit, std::int64_t count) {
        switch (unit) {
            case DurationFormatter::Unit::day:
                return L10n::Amount::days(*environment, count);
            case DurationFormatter::Unit::hour:
                return L10n::Amount::hours(*environment, count);
            case DurationFormatter::Unit::minute:
                return L10n::Amount::minutes(*environment, count);
            case DurationFormatter::Unit::second:
                break;
        }
        return L10n::Amount::seconds(*environment, count);
    };
    const auto joined = [environment](const std::string& larger, const std::string& smaller) {
        return L10n::Amount::joined(*environment, larger, smaller);
    };
    return DurationFormatter::Words{amount, joined};
}

}  // namespace

struct Formatters::State {
    explicit State(platform::EnvironmentRef world) : environment(std::move(world)) {}

    platform::EnvironmentRef environment;
    Lazy<platform::Locale> words;
    Lazy<platform::RelativeDateTimeFormatter> relativeDefault;
    Lazy<DateFormatter> timeOnly;
    Lazy<DateFormatter> timeAndDate;
    Lazy<DateFormatter> dateOnly;
    Lazy<DateFormatter> longDateAndTime;
    Lazy<DateFormatter> dateOnlyNoYearWeekDay;
    Lazy<DateFormatter> calendarEventOccurrence;
    Lazy<DateFormatter> weekDay;
    Lazy<DurationFormatter> timeRemaining;
    Lazy<DurationFormatter> countdown;
    Lazy<DurationFormatter> duration;
    Lazy<DurationFormatter> durationForAccessibility;
    Lazy<DurationFormatter> durationForTimeOffset;

    const platform::Locale& locale() const { return environment->locale; }
    const platform::Calendar& calendar() const { return environment->calendar; }

    const DateFormatter& styled(Lazy<DateFormatter>& formatter, Style date, Style time) const {
        return formatter.get([&] { return DateFormatter::withStyles(locale(), calendar(), date, time); });
    }
    /// With words of the language of the string tables, so that they suit the phrases around them.
    const platform::Locale& wordLocale() const {
        return words.get([&] {
            platform::Locale result = locale();
            result.languages = {textLanguage(*environment)};
            return result;
        });
    }
    const DurationFormatter& ofDurations(Lazy<DurationFormatter>& formatter,
                                         DurationFormatter::Configuration configuration) const {
        return formatter.get([&] {
            if (configuration.style == Units::abbreviated)
                configuration.words = wordsOfAmounts(environment.get());
            return DurationFormatter(wordLocale(), calendar(), configuration);
        });
    }
};

Formatters::Formatters(platform::EnvironmentRef environment)
    : state_(std::make_unique<State>(std::move(environment))) {}

Formatters::~Formatters() = default;

Formatters& Formatters::shared() {
    // Never destroyed: other threads may still format while the process ends.
    static Formatters& formatters = *new Formatters(platform::Environment::current());
    return formatters;
}

const platform::Environment& Formatters::environment() const {
    return *state_->environment;
}

const platform::RelativeDateTimeFormatter& Formatters::relativeDefault() const {
    return state_->relativeDefault.get(
        [this] { return platform::RelativeDateTimeFormatter(state_->wordLocale(), state_->calendar()); });
}

const DateFormatter& Formatters::timeOnly() const {
    return state_->styled(state_->timeOnly, Style::none, Style::short_);
}

const DateFormatter& Formatters::timeAndDateFormatter() const {
    return state_->timeAndDate.get(
        [this] { return DateFormatter::relativeDateAndTime(state_->wordLocale(), state_->calendar()); });
}

const DateFormatter& Formatters::dateOnly() const {
    return state_->styled(state_->dateOnly, Style::long_, Style::none);
}

const DateFormatter& Formatters::longDateAndTime() const {
    return state_->styled(state_->longDateAndTime, Style::long_, Style::short_);
}

const DateFormatter& Formatters::dateOnlyNoYearWeekDay() const {
    return state_->dateOnlyNoYearWeekDay.get(
        [this] { return DateFormatter::withTemplate(state_->locale(), state_->calendar(), "EdMMM"); });
}

const DateFormatter& Formatters::calendarEventOccurrence() const {
    return state_->calendarEventOccurrence.get([] {
        return DateFormatter::withPattern({.identifier = "en_US_POSIX"},
                                          platform::Calendar(platform::TimeZone::utc()),
                                          "yyyyMMdd'T'HHmmss'Z'");
    });
}

const DateFormatter& Formatters::weekDay() const {
    return state_->weekDay.get(
        [this] { return DateFormatter::withPattern(state_->locale(), state_->calendar(), "EEEE"); });
}

std::optional<std::string> Formatters::timeRemaining(double seconds) const {
    const auto amount =
        state_->ofDurations(state_->timeRemaining, {.seconds = true, .maximumUnitCount = 1}).string(seconds);
    if (!amount) return std::nullopt;
    return L10n::TimeFormat::remaining(*state_->environment, *amount);
}

const DurationFormatter& Formatters::countdownFormatter() const {
    return state_->ofDurations(state_->countdown, {.maximumUnitCount = 2});
}

const DurationFormatter& Formatters::durationFormatter() const {
    return state_->ofDurations(state_->duration, {});
}

const DurationFormatter& Formatters::durationFormatterForAccessibility() const {
    return state_->ofDurations(state_->durationForAccessibility, {.style = Units::full});
}

const DurationFormatter& Formatters::durationFormatterForTimeOffset() const {
    return state_->ofDurations(state_->durationForTimeOffset,
                               {.style = Units::full, .days = false, .seconds = true});
}

}  // namespace hbr
