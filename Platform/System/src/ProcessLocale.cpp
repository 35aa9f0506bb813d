#include "ProcessLocale.h"

#include <algorithm>
#include <initializer_list>

namespace platform {
namespace {

/// The parts of "language_TERRITORY.codeset@modifier" that matter here.
struct PosixLocale {
    std::string language;
    std::string script;
    std::string territory;
};

PosixLocale parse(std::string_view name) {
    std::string_view modifier;
    if (auto at = name.find('@'); at != std::string_view::npos) {
        modifier = name.substr(at + 1);
        name = name.substr(0, at);
    }
    name = name.substr(0, name.find('.'));
    if (name.empty() || name == "C" || name == "POSIX") return {"en", "", "US"};
    PosixLocale locale;
    auto separator = name.find_first_of("_-");
    locale.language = name.substr(0, separator);
    if (separator != std::string_view::npos) locale.territory = name.substr(separator + 1);
    if (modifier == "latin") locale.script = "Latn";
    if (modifier == "cyrillic") locale.script = "Cyrl";
    return locale;
}

std::string joined(const PosixLocale& locale, char separator) {
    std::string text = locale.language;
    for (const std::string& part : {locale.script, locale.territory}) {
        if (!part.empty()) (text += separator) += part;
    }
    std::ranges::replace(text, separator == '_' ? '-' : '_', separator);
    return text;
}

std::string firstSet(const VariableLookup& variable, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        if (std::string value = variable(name); !value.empty()) return value;
    }
    return "C";
}

}  // namespace

Locale processLocale(const VariableLookup& variable, const HourCycleLookup& desktopClock) {
    Locale locale;
    locale.identifier = joined(parse(firstSet(variable, {"LC_ALL", "LC_TIME", "LANG"})), '_');
    if (variable("LC_ALL").empty()) {
        if (const auto cycle = desktopClock())
            locale.identifier += *cycle == HourCycle::twelve ? "@hours=h12" : "@hours=h23";
    }
    locale.languages.clear();
    std::string list = variable("LANGUAGE");
    if (list.find_first_not_of(':') == std::string::npos) {
        list = firstSet(variable, {"LC_ALL", "LC_MESSAGES", "LANG"});
    }
    for (std::string_view rest = list; !rest.empty();) {
        auto end = std::min(rest.find(':'), rest.size());
        if (end > 0) {
            std::string tag = joined(parse(rest.substr(0, end)), '-');
            if (std::ranges::find(locale.languages, tag) == locale.languages.end())
                locale.languages.push_back(std::move(tag));
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return locale;
}

}  // namespace platform
