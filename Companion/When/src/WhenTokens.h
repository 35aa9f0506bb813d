#pragma once

#include <When/WhenWords.h>

#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// One piece of a typed moment.
struct WhenToken {
    enum class Kind {
        word,
        /// "9"; `isOrdinal` for "1." and "1st".
        number,
        /// "9:00", "9:00:30".
        time,
        /// "2026-12-01", "1.12.2026", "1.12.".
        date,
        /// "1.12" or "14.30": a date or a time.
        dotted,
        /// "12/1" or "12/1/2026": day and month in an unknown order.
        slashed,
    };

    Kind kind = Kind::word;
    WhenMeaning meaning;
    /// number: its value; time: hour, minute, second; date: year (0 for none), month, day; dotted and
    /// slashed: as written, year (0 for none) last.
    int parts[3] = {0, 0, 0};
    bool isOrdinal = false;
    std::string text;

    bool is(Kind wanted) const { return kind == wanted; }
    bool is(WhenWord wanted) const { return kind == Kind::word && meaning.word == wanted; }
};

/// Throws WhenRefusal for a piece that is neither a known word nor a number.
std::vector<WhenToken> whenTokens(std::string_view text, const WhenWords& words);

}  // namespace hbr
