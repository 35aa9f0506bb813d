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
    /// May stand anywhere and says nothing.
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
    /// With its number, 1 Sunday to 7 Saturday.
    weekday,
    /// With its number, 1 January to 12 December.
    month,
};

struct WhenMeaning {
    WhenWord word = WhenWord::filler;
    int value = 0;
};

/// The words of moments in every shipped language, those of the user's languages winning. Names of weekdays
/// and months are made on first use. Not for several threads; the environment must outlive it.
class WhenWords {
  public:
    explicit WhenWords(const platform::Environment& environment);

    /// Words are lower-case, without full stops at the end, one blank between them.
    std::optional<WhenMeaning> meaning(const std::string& words) const;
    /// The one that it was made for.
    const platform::Environment& environment() const { return environment_; }
    /// A weekday's full or short name, or a beginning of it of three letters and more.
    std::optional<int> weekday(std::string_view name) const;
    /// For proposals.
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

/// Lower-case, canonically composed, with plain apostrophes and hyphens, and blanks for every kind of space
/// and for commas; marks of direction are gone.
std::string plainWords(std::string_view text);

}  // namespace hbr
