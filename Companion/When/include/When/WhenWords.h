#pragma once

#include <System/Environment.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

enum class WhenWord {
    today,
    tomorrow,
    dayAfterTomorrow,
    next,
    in,
    /// Filler, ignored.
    filler,
    noon,
    midnight,
    am,
    pm,
    oclock,
    one,
    half,
    /// "st" of "1st".
    ordinal,
    second,
    minute,
    hour,
    day,
    week,
    twoHours,
    twoDays,
    twoWeeks,
    /// `value` is 1 (Sunday) to 7 (Saturday).
    weekday,
    /// `value` is 1 (January) to 12 (December).
    month,
};

struct WhenMeaning {
    WhenWord word = WhenWord::filler;
    int value = 0;
};

/// The words for moments in every shipped language. Where languages disagree, the user's come first. Names of
/// weekdays and months are made on first use. Not thread-safe; the environment must outlive it.
class WhenWords {
  public:
    explicit WhenWords(const platform::Environment& environment);

    /// `words` is lower-case, with single blanks and without full stops at the end.
    std::optional<WhenMeaning> meaning(const std::string& words) const;
    /// The environment given to the constructor.
    const platform::Environment& environment() const { return environment_; }
    /// 1 (Sunday) to 7 (Saturday), from a full or short name or its first three or more letters.
    std::optional<int> weekday(std::string_view name) const;
    /// Candidates for "did you mean".
    std::vector<std::string> all() const;

    static constexpr std::size_t longestPhrase = 4;

  private:
    using Words = std::map<std::string, WhenMeaning, std::less<>>;

    const Words& names() const;
    std::optional<WhenMeaning> exactMeaning(const std::string& words) const;

    const platform::Environment& environment_;
    std::vector<std::string> languages_;
    std::vector<std::string> attachedPrefixes_;
    Words words_;
    mutable std::optional<Words> names_;
};

/// Lower-case and canonically composed, with plain apostrophes and hyphens, blanks for all spaces and commas,
/// and no direction marks.
std::string plainWords(std::string_view text);

}  // namespace hbr
