#include "WhenReading.h"

#include "WhenRefusing.h"
#include "WhenTokens.h"

#include <cstdio>

namespace hbr {

namespace {

using Kind = WhenToken::Kind;

/// Reads the pieces from the first to the last.
class Reader {
  public:
    Reader(std::string_view text, const WhenWords& words)
        : environment_(words.environment()), tokens_(whenTokens(text, words)) {
        reading_.text = text;
    }

    WhenReading read() {
        while (at_ < tokens_.size())
            readOne();
        settleDotted();
        return reading_;
    }

  private:
    [[noreturn]] void refuse(std::string_view key,
                             std::initializer_list<L10n::FormatArgument> arguments = {}) const {
        refuseWhen(environment_, key, arguments);
    }

    const WhenToken* peek(std::size_t ahead = 0) const {
        return at_ + ahead < tokens_.size() ? &tokens_[at_ + ahead] : nullptr;
    }
    bool nextIs(WhenWord word) const { return peek() && peek()->is(word); }
    bool take(WhenWord word) {
        if (!nextIs(word)) return false;
        ++at_;
        return true;
    }

    void readOne() {
        const WhenToken token = tokens_[at_++];
        switch (token.kind) {
            case Kind::word:
                return readWord(token);
            case Kind::number:
                return readNumber(token);
            case Kind::time:
                return readTime(token.parts[0], token.parts[1], token.parts[2], token.text);
            case Kind::date:
                return setDate(token.parts[0], token.parts[1], token.parts[2]);
            case Kind::dotted:
                if (nextIs(WhenWord::oclock) || nextIs(WhenWord::am) || nextIs(WhenWord::pm)) {
                    return readTime(token.parts[0], token.parts[1], 0, token.text);
                }
                if (dotted_) refuse("When.twoAmbiguous", {token.text, dotted_->text});
                dotted_ = token;
                return;
            case Kind::slashed:
                return readSlashed(token);
        }
    }

    void readWord(const WhenToken& token) {
        switch (token.meaning.word) {
            case WhenWord::today:
                return setDayOffset(0);
            case WhenWord::tomorrow:
                return setDayOffset(1);
            case WhenWord::dayAfterTomorrow:
                return setDayOffset(2);
            case WhenWord::weekday:
                if (reading_.weekday && *reading_.weekday != token.meaning.value) refuse("When.twoWeekdays");
                reading_.weekday = token.meaning.value;
                return;
            case WhenWord::month:
                return readMonth(token);
            case WhenWord::next:
                reading_.isNext = true;
                return;
            case WhenWord::noon:
                return setTime(12, 0, 0, token.text);
            case WhenWord::midnight:
                refuse("When.midnight", {token.text});
            case WhenWord::half:
                return readHalf(token);
            case WhenWord::one:
                if (peek() && unitOf(*peek())) addLength(1);
                return;
            case WhenWord::in:
                isAfterIn_ = true;
                return;
            case WhenWord::twoHours:
                return addSeconds(2 * 3600);
            case WhenWord::twoDays:
                return addDays(2);
            case WhenWord::twoWeeks:
                return addDays(14);
            case WhenWord::am:
                // "am Freitag".
                return;
            case WhenWord::filler:
                return;
            default:
                break;
        }
        if (unitOf(token) && isAfterIn_) {
            --at_;
            return addLength(1);
        }
        refuse("When.saysNothing", {token.text});
    }

    void readNumber(const WhenToken& token) {
        const int value = token.parts[0];
        const WhenToken* next = peek();
        if (next && unitOf(*next)) return addLength(value);
        if (next && next->is(WhenWord::month)) {
            const int month = next->meaning.value;
            ++at_;
            return setDate(takeYear(), month, value);
        }
        if (token.isOrdinal || !next ||
            !(next->is(WhenWord::am) || next->is(WhenWord::pm) || next->is(WhenWord::oclock))) {
            const std::string hour = std::to_string(value);
            if (isAfterIn_) refuse("When.noUnit", {token.text, hour});
            if (value < 13) refuse("When.alone.half", {token.text, hour});
            if (value < 24) refuse("When.alone.hour", {token.text, hour});
            refuse("When.alone", {token.text});
        }
        readTime(value, 0, 0, token.text);
    }

    /// A month's name and the day after it.
    void readMonth(const WhenToken& token) {
        const WhenToken* next = peek();
        if (!next || !next->is(Kind::number)) refuse("When.needsDay", {token.text});
        const int day = next->parts[0];
        ++at_;
        setDate(takeYear(), token.meaning.value, day);
    }

    int takeYear() {
        constexpr int firstYear = 1900;
        const WhenToken* next = peek();
        if (!next || !next->is(Kind::number) || next->parts[0] < firstYear) return 0;
        ++at_;
        return next->parts[0];
    }

    void readTime(int hour, int minute, int second, std::string text) {
        constexpr int noon = 12;
        bool isMarked = false;
        if (take(WhenWord::oclock)) {
            const WhenToken* minutes = peek();
            const WhenToken* behind = peek(1);
            // "14 Uhr 30".
            if (minutes && minutes->is(Kind::number) && minute == 0 && minutes->parts[0] < 60 &&
                !(behind && (unitOf(*behind) || behind->is(WhenWord::month)))) {
                minute = minutes->parts[0];
                ++at_;
            }
        }
        if (nextIs(WhenWord::am) && isDay(peek(1)) && hour >= noon) {
            // "um 14 Uhr am Freitag"; at twelve it could be midnight.
            if (hour == noon) refuse("When.noonOrMidnight", {text});
        } else if (nextIs(WhenWord::am) || nextIs(WhenWord::pm)) {
            if (hour < 1 || hour > noon) refuse("When.noTime", {text + " " + peek()->text});
            hour = hour % noon + (nextIs(WhenWord::pm) ? noon : 0);
            isMarked = true;
        }
        if (isMarked) ++at_;
        setTime(hour, minute, second, std::move(text));
    }

    static bool isDay(const WhenToken* token) {
        return token && (token->is(WhenWord::weekday) || token->is(Kind::date) || token->is(Kind::dotted) ||
                         (token->is(Kind::number) && token->isOrdinal));
    }

    void readHalf(const WhenToken& token) {
        take(WhenWord::one);
        if (nextIs(WhenWord::hour)) {
            ++at_;
            return addSeconds(1800);
        }
        refuse("When.half", {token.text});
    }

    void readSlashed(const WhenToken& token) {
        constexpr int months = 12;
        const int a = token.parts[0];
        const int b = token.parts[1];
        const int year = token.parts[2];
        if (a > months) return setDate(year, b, a);
        if (b > months || a == b) return setDate(year, a, b);
        if (year == 0) {
            refuse("When.slashedWithoutYear", {token.text, std::to_string(a), std::to_string(b)});
        }
        char first[40];
        char second[40];
        std::snprintf(first, sizeof first, "%04d-%02d-%02d", year, a, b);
        std::snprintf(second, sizeof second, "%04d-%02d-%02d", year, b, a);
        refuse("When.slashed", {token.text, std::string_view(first), std::string_view(second)});
    }

    /// "1.12" is a date if there is also a time, and a time if there is also a day.
    void settleDotted() {
        if (!dotted_) return;
        const int a = dotted_->parts[0];
        const int b = dotted_->parts[1];
        const bool namesDay =
            reading_.date || reading_.weekday || reading_.dayOffset || (reading_.days && !reading_.seconds);
        const bool hasTwoDigits = dotted_->text.size() - dotted_->text.find('.') == 3;
        const bool canBeTime = a < 24 && b < 60 && hasTwoDigits && !reading_.time;
        const bool canBeDate = a >= 1 && a <= 31 && b >= 1 && b <= 12 && !namesDay;
        if (canBeTime && canBeDate) {
            std::string time = dotted_->text;
            time[time.find('.')] = ':';
            refuse("When.dayOrTime", {dotted_->text, time});
        }
        if (canBeDate) return setDate(0, b, a);
        setTime(a, b, 0, dotted_->text);
    }

    void setDate(int year, int month, int day) {
        const platform::LocalTime date{year, month, day, 0, 0, 0};
        if (reading_.dayOffset || reading_.date) refuse("When.twoDays");
        reading_.date = date;
    }

    void setDayOffset(int days) {
        if (reading_.dayOffset || reading_.date) refuse("When.twoDays");
        reading_.dayOffset = days;
    }

    void setTime(int hour, int minute, int second, const std::string& text) {
        if (hour > 23 || minute > 59 || second > 59) refuse("When.noTime", {text});
        if (reading_.time) refuse("When.twoTimes");
        reading_.time = {hour, minute, second};
    }

    struct Unit {
        int seconds = 0;
        int days = 0;
    };

    static std::optional<Unit> unitOf(const WhenToken& token) {
        if (!token.is(Kind::word)) return std::nullopt;
        switch (token.meaning.word) {
            case WhenWord::second:
                return Unit{1, 0};
            case WhenWord::minute:
                return Unit{60, 0};
            case WhenWord::hour:
                return Unit{3600, 0};
            case WhenWord::day:
                return Unit{0, 1};
            case WhenWord::week:
                return Unit{0, 7};
            default:
                return std::nullopt;
        }
    }

    /// That many of the unit that follows.
    void addLength(int count) {
        const Unit unit = *unitOf(*peek());
        ++at_;
        if (unit.days != 0) return addDays(static_cast<double>(count) * unit.days);
        addSeconds(static_cast<double>(count) * unit.seconds);
        // "1h30": a number without a unit after hours is minutes.
        const WhenToken* rest = peek();
        const WhenToken* behind = peek(1);
        constexpr int minutes = 60;
        if (unit.seconds == 3600 && rest && rest->is(Kind::number) && !rest->isOrdinal && !behind) {
            if (rest->parts[0] >= minutes) refuse("When.tooManyMinutes", {rest->text});
            ++at_;
            addSeconds(rest->parts[0] * 60.0);
        }
    }

    void addSeconds(double seconds) { reading_.seconds = reading_.seconds.value_or(0) + seconds; }
    void addDays(double days) {
        constexpr double most = 1e6;
        if (days > most) refuse("When.tooFar");
        reading_.days = reading_.days.value_or(0) + static_cast<int>(days);
    }

    const platform::Environment& environment_;
    std::vector<WhenToken> tokens_;
    std::size_t at_ = 0;
    WhenReading reading_;
    std::optional<WhenToken> dotted_;
    bool isAfterIn_ = false;
};

}  // namespace

WhenReading readWhen(std::string_view text, const WhenWords& words) {
    return Reader(text, words).read();
}

}  // namespace hbr
