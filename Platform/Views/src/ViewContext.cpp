#include <Views/ViewContext.h>

#include <algorithm>
#include <array>

namespace platform {

bool isRightToLeftLanguage(std::string_view languageTag) {
    static constexpr std::array<std::string_view, 12> languages = {"ar", "arc", "ckb", "dv", "fa", "he",
                                                                   "iw", "ps",  "sd",  "ug", "ur", "yi"};
    const auto language = languageTag.substr(0, languageTag.find_first_of("-_"));
    return std::find(languages.begin(), languages.end(), language) != languages.end();
}

}  // namespace platform
