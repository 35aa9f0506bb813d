#include <HbrLocalization/TableText.h>

#include <HbrLocalization/PrintfFormat.h>
#include <HbrLocalization/StringBundle.h>

#include "ArgumentList.h"

namespace hbr {

namespace {

constexpr std::string_view table = "Localizable";

}  // namespace

std::string tableText(const platform::Environment& environment, std::string_view bundle, std::string_view key,
                      std::initializer_list<L10n::FormatArgument> arguments) {
    return tableText(environment, bundle, key, std::span(arguments.begin(), arguments.size()));
}

std::string tableText(const platform::Environment& environment, std::string_view bundle, std::string_view key,
                      std::span<const L10n::FormatArgument> arguments) {
    const auto strings = StringBundle::of(environment, bundle);
    if (!strings) return std::string(key);
    const ArgumentList list(arguments, strings->isRightToLeft());
    const StringBundle::Form form{.count = list.count()};
    const std::string english = strings->englishText(key, table, form).value_or(std::string(key));
    return formattedText(strings->localizedString(key, table, english, form), list.arguments(),
                         environment.locale);
}

std::string englishTableText(const platform::Environment& environment, std::string_view bundle,
                             std::string_view key, std::span<const L10n::FormatArgument> arguments) {
    static const platform::Locale plain{"en_US_POSIX", {"en"}};
    const auto strings = StringBundle::of(environment, bundle);
    if (!strings) return std::string(key);
    // Only the count is asked of the list.
    const StringBundle::Form form{.count = ArgumentList(arguments, false).count()};
    return formattedText(strings->englishText(key, table, form).value_or(std::string(key)), arguments, plain);
}

}  // namespace hbr
