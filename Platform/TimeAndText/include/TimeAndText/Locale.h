#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// How dates, times and numbers are written, and in which languages texts are preferred. A plain value.
/// Dates follow `identifier`, names of months and weekdays included; words of amounts and distances ("2 hours
/// ago", "tomorrow") are texts and follow `languages`, with the digits of `identifier`.
struct Locale {
    /// ICU identifier with region and keywords ("en_US", "de_DE", "en_GB@hours=h12").
    std::string identifier = "en_US";
    /// Languages of texts, most wanted first, as BCP 47 tags ("de-AT", "en").
    std::vector<std::string> languages = {"en"};

    /// The most wanted language of texts.
    const std::string& language() const { return languages.empty() ? identifier : languages.front(); }

    friend bool operator==(const Locale&, const Locale&) = default;
};

/// `text` with the decimal digits that the locale writes numbers with instead of 0 to 9.
std::string withLocalDigits(std::string_view text, const Locale& locale);

/// Whether the language of the BCP 47 tag is written from right to left.
bool isRightToLeftLanguage(std::string_view tag);

}  // namespace platform
