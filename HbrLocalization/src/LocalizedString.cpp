#include <HbrLocalization/LocalizedString.h>

#include <HbrLocalization/PrintfFormat.h>
#include <HbrLocalization/StringBundle.h>

#include "AccessorText.h"
#include "ArgumentList.h"

#include <cstdio>
#include <cstdlib>

namespace hbr {

namespace {

constexpr std::string_view localizable = "Localizable";

const StringBundle& stringsOf(const platform::Environment& environment) {
    const auto strings = StringBundle::of(environment, "HbrLocalization_HbrLocalization.bundle");
    if (!strings) {
        std::fputs("unable to find bundle named HbrLocalization_HbrLocalization\n", stderr);
        std::_Exit(EXIT_FAILURE);
    }
    // The environment keeps it.
    return *strings;
}

std::string localizedString(const platform::Environment& environment, std::string_view key,
                            std::string_view table, std::string_view defaultText) {
    return stringsOf(environment).localizedString(key, table, defaultText);
}

}  // namespace

std::string LocalizedString(std::string_view key) {
    return LocalizedString(key, localizable, key);
}

std::string LocalizedString(const platform::Environment& environment, std::string_view key) {
    return localizedString(environment, key, localizable, key);
}

std::string LocalizedString(std::string_view key, std::string_view table, std::string_view defaultText) {
    return localizedString(*platform::Environment::current(), key, table, defaultText);
}

std::optional<std::string> LocalizedStringOrNil(std::string_view key) {
    return LocalizedStringOrNil(localizable, key);
}

std::optional<std::string> LocalizedStringOrNil(std::string_view table, std::string_view key) {
    auto text = LocalizedString(key, table, key);
    if (text == key) return std::nullopt;
    return text;
}

std::string textLanguage(const platform::Environment& environment) {
    return stringsOf(environment).language();
}

bool hasLocalizedText(const platform::Environment& environment, std::string_view key) {
    return stringsOf(environment).text(key, localizable).has_value();
}

std::string localizedForm(const platform::Environment& environment, std::string_view key,
                          std::string_view defaultText, const StringBundle::Form& form) {
    return formattedText(stringsOf(environment).localizedString(key, localizable, defaultText, form), {},
                         environment.locale);
}

std::string L10n::accessorText(std::string_view key, std::string_view defaultText,
                               std::initializer_list<FormatArgument> arguments) {
    return accessorText(*platform::Environment::current(), key, defaultText, arguments);
}

std::string L10n::accessorText(const platform::Environment& environment, std::string_view key,
                               std::string_view defaultText,
                               std::initializer_list<FormatArgument> arguments) {
    const auto& strings = stringsOf(environment);
    const ArgumentList list(std::span(arguments.begin(), arguments.size()), strings.isRightToLeft());
    return formattedText(strings.localizedString(key, localizable, defaultText, {.count = list.count()}),
                         list.arguments(), environment.locale);
}

}  // namespace hbr
