#include <HbrLocalization/TableText.h>

#include <HbrLocalization/PrintfFormat.h>
#include <HbrLocalization/StringBundle.h>

#include "ArgumentList.h"

namespace hbr {

std::string tableText(const platform::Environment& environment, std::string_view bundle, std::string_view key,
                      std::initializer_list<L10n::FormatArgument> arguments) {
    constexpr std::string_view table = "Localizable";
    const auto strings = StringBundle::of(environment, bundle);
    if (!strings) return std::string(key);
    const ArgumentList list(arguments, strings->isRightToLeft());
    const StringBundle::Form form{.count = list.count()};
    const std::string english = strings->englishText(key, table, form).value_or(std::string(key));
    return formattedText(strings->localizedString(key, table, english, form), list.arguments(),
                         environment.locale);
}

}  // namespace hbr
