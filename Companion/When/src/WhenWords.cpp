#include <When/WhenWords.h>

#include <TimeAndText/DateFormatter.h>
#include <TimeAndText/Normalization.h>
#include <TimeAndText/Text.h>

#include <algorithm>
#include <array>
#include <utility>

namespace hbr {

namespace {

struct LanguageWords {
    std::string_view language;
    /// Prepositions that are joined to the next word.
    std::string_view attachedPrefixes;
    std::vector<std::pair<WhenWord, std::string_view>> words;
};

/// All that another language needs; alternatives are separated by "|". Names of weekdays and months come from
/// ICU's data of the language.
const std::vector<LanguageWords>& languageTable() {
    using enum WhenWord;
    static const std::vector<LanguageWords> table = {
        {"en",
         "",
         {{today, "today"},
          {tomorrow, "tomorrow|tmrw"},
          {dayAfterTomorrow, "day after tomorrow|the day after tomorrow"},
          {next, "next"},
          {in, "in"},
          {filler, "at|on|the|of|and|this|coming|from now"},
          {noon, "noon|midday"},
          {midnight, "midnight"},
          {am, "am|a.m"},
          {pm, "pm|p.m"},
          {oclock, "o'clock"},
          {one, "a|an|one"},
          {half, "half"},
          {ordinal, "st|nd|rd|th"},
          {second, "s|sec|secs|second|seconds"},
          {minute, "m|min|mins|minute|minutes"},
          {hour, "h|hr|hrs|hour|hours"},
          {day, "d|day|days"},
          {week, "w|week|weeks"}}},
        {"de",
         "",
         {{today, "heute"},
          {tomorrow, "morgen"},
          {dayAfterTomorrow, "übermorgen"},
          {next, "nächste|nächsten|nächster"},
          {in, "in"},
          {filler, "um|den|der|dem|und|diesen|kommenden"},
          {noon, "mittag|mittags"},
          {midnight, "mitternacht"},
          {oclock, "uhr"},
          {one, "ein|eine|einem|einen|einer"},
          {half, "halbe|halben"},
          {second, "s|sek|sekunde|sekunden"},
          {minute, "m|min|minute|minuten"},
          {hour, "h|std|stunde|stunden"},
          {day, "d|tag|tage|tagen"},
          {week, "w|woche|wochen"}}},
        {"he",
         "ב|ל|ה|ו",
         {{today, "היום"},
          {tomorrow, "מחר"},
          {dayAfterTomorrow, "מחרתיים"},
          {next, "הבא|הבאה"},
          {in, "בעוד|עוד"},
          {filler, "ב|ל|בשעה|הקרוב"},
          {noon, "צהריים|בצהריים"},
          {midnight, "חצות"},
          {half, "חצי"},
          {second, "שנייה|שניה|שניות"},
          {minute, "דקה|דקות|דק'"},
          {hour, "שעה|שעות"},
          {day, "יום|ימים"},
          {week, "שבוע|שבועות"},
          {twoHours, "שעתיים"},
          {twoDays, "יומיים"},
          {twoWeeks, "שבועיים"}}},
    };
    return table;
}

/// The tables, those of the user's languages first.
std::vector<const LanguageWords*> tablesFor(const platform::Locale& locale) {
    std::vector<const LanguageWords*> tables;
    const auto add = [&](const LanguageWords& table) {
        if (std::find(tables.begin(), tables.end(), &table) == tables.end()) tables.push_back(&table);
    };
    for (const auto& language : locale.languages) {
        for (const auto& table : languageTable()) {
            if (language.substr(0, language.find_first_of("-_")) == table.language) add(table);
        }
    }
    for (const auto& table : languageTable())
        add(table);
    return tables;
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string withoutFullStops(std::string name) {
    std::erase(name, '.');
    return name;
}

}  // namespace

std::string plainWords(std::string_view text) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 16> replacements = {{
        {"\u00A0", " "},
        {"\u2006", " "},
        {"\u2009", " "},
        {"\u202F", " "},
        {"\t", " "},
        {"\n", " "},
        {",", " "},
        {"\u200E", ""},
        {"\u200F", ""},
        {"\u2019", "'"},
        {"\u05F3", "'"},
        {"\u05BE", "-"},
        {"\u2010", "-"},
        {"\u2011", "-"},
        {"\u2066", ""},
        {"\u2069", ""},
    }};
    std::string plain = platform::canonicallyComposed(platform::lowercased(text));
    for (const auto& [from, to] : replacements)
        replaceAll(plain, from, to);
    return plain;
}

WhenWords::WhenWords(const platform::Environment& environment) : environment_(environment) {
    for (const auto* table : tablesFor(environment.locale)) {
        languages_.emplace_back(table->language);
        for (const auto& prefix : platform::split(table->attachedPrefixes, "|", false))
            attachedPrefixes_.push_back(prefix);
        for (const auto& [word, texts] : table->words) {
            for (const auto& text : platform::split(texts, "|"))
                words_.emplace(text, WhenMeaning{word, 0});
        }
    }
}

const WhenWords::Words& WhenWords::names() const {
    if (names_) return *names_;
    names_.emplace();
    const platform::Calendar calendar(platform::TimeZone::utc());
    for (const auto& language : languages_) {
        const platform::Locale locale{language, {language}};
        const auto add = [&](std::string_view pattern, WhenWord word, int count, auto dateOf) {
            const auto formatter = platform::DateFormatter::withPattern(locale, calendar, pattern);
            for (int number = 1; number <= count; ++number) {
                const std::string name = withoutFullStops(plainWords(formatter.string(dateOf(number))));
                names_->emplace(name, WhenMeaning{word, number});
                // "שישי" for "יום שישי".
                if (const auto blank = name.rfind(' '); blank != std::string::npos)
                    names_->emplace(name.substr(blank + 1), WhenMeaning{word, number});
            }
        };
        // 7 January 2001 was a Sunday.
        const auto weekdayDate = [&](int number) {
            return *calendar.date({.year = 2001, .month = 1, .day = 6 + number, .hour = 12});
        };
        const auto monthDate = [&](int number) {
            return *calendar.date({.year = 2001, .month = number, .day = 15});
        };
        for (const auto* pattern : {"EEEE", "EEE", "EEEEEE"})
            add(pattern, WhenWord::weekday, 7, weekdayDate);
        for (const auto* pattern : {"MMMM", "MMM", "LLLL", "LLL"})
            add(pattern, WhenWord::month, 12, monthDate);
    }
    return *names_;
}

std::optional<WhenMeaning> WhenWords::exactMeaning(const std::string& words) const {
    if (const auto found = words_.find(words); found != words_.end()) return found->second;
    const Words& all = names();
    if (const auto found = all.find(words); found != all.end()) return found->second;
    // "thurs", "sept": a prefix of only one day or month.
    if (platform::characterCount(words) < 3) return std::nullopt;
    std::optional<WhenMeaning> meaning;
    for (auto name = all.lower_bound(words); name != all.end() && name->first.starts_with(words); ++name) {
        if (meaning && (meaning->word != name->second.word || meaning->value != name->second.value)) {
            return std::nullopt;
        }
        meaning = name->second;
    }
    return meaning;
}

std::optional<WhenMeaning> WhenWords::meaning(const std::string& words) const {
    if (auto found = exactMeaning(words)) return found;
    for (const auto& prefix : attachedPrefixes_) {
        if (words.size() <= prefix.size() || !words.starts_with(prefix)) continue;
        std::string rest = words.substr(prefix.size());
        if (rest.front() == '-') rest.erase(0, 1);
        if (auto found = exactMeaning(rest)) return found;
    }
    return std::nullopt;
}

std::optional<int> WhenWords::weekday(std::string_view name) const {
    const auto found = meaning(withoutFullStops(platform::trimmed(plainWords(name))));
    return found && found->word == WhenWord::weekday ? std::optional(found->value) : std::nullopt;
}

std::vector<std::string> WhenWords::all() const {
    std::vector<std::string> list;
    for (const auto& words : {words_, names()}) {
        for (const auto& [text, meaning] : words) {
            if (platform::characterCount(text) > 3) list.push_back(text);
        }
    }
    return list;
}

}  // namespace hbr
