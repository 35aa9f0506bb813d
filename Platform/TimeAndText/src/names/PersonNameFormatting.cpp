#include <TimeAndText/PersonName.h>
#include <TimeAndText/Text.h>

#include "NameScript.h"

namespace platform {
namespace {

constexpr std::string_view middleDot = "・";

std::string full(const PersonNameComponents& name, NameScript script) {
    if (script == NameScript::familyFirst) return name.familyName + name.givenName;
    std::string text = name.givenName;
    if (!name.givenName.empty() && !name.familyName.empty()) {
        text += script == NameScript::transcribed ? middleDot : " ";
    }
    return text + name.familyName;
}

std::string initials(const PersonNameComponents& name, NameScript script) {
    // A family name says more than two syllables of given and family name side by side.
    const bool hasBoth = !name.givenName.empty() && !name.familyName.empty();
    if (script == NameScript::familyFirst && hasBoth) return name.familyName;

    std::string text(initialOf(name.givenName));
    if (hasBoth && script == NameScript::rightToLeft) text += ' ';
    text += initialOf(name.familyName);
    return uppercased(text, "");
}

}  // namespace

std::string PersonNameComponentsFormatter::string(const PersonNameComponents& components) const {
    const auto script = nameScript(components.givenName + components.familyName);
    return style_ == Style::abbreviated ? initials(components, script) : full(components, script);
}

}  // namespace platform
