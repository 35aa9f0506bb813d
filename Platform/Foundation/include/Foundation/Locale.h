#pragma once

#include <string>
#include <vector>

namespace platform {

/// How dates, times and numbers are written, and in which languages texts are preferred. A plain value.
struct Locale {
    /// ICU identifier with region and keywords ("en_US", "de_DE", "en_GB@hours=h12").
    std::string identifier = "en_US";
    /// Languages of texts, most wanted first, as BCP 47 tags ("de-AT", "en").
    std::vector<std::string> languages = {"en"};

    friend bool operator==(const Locale&, const Locale&) = default;
};

}  // namespace platform
