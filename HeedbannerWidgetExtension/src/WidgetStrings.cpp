#include <HeedbannerWidgetExtension/WidgetStrings.h>

#include <HbrLocalization/FormatArgument.h>
#include <HbrLocalization/PrintfFormat.h>

#include <cstdint>
#include <utility>

namespace hbr {

namespace {
constexpr std::string_view table = "Localizable";
}

WidgetStrings::WidgetStrings(platform::EnvironmentRef environment)
    : bundle_(StringBundle::of(*environment, bundleName)), environment_(std::move(environment)) {}

std::string WidgetStrings::language() const {
    return bundle_ ? bundle_->language() : std::string("en");
}

std::string WidgetStrings::text(std::string_view key) const {
    return textOf(key, {});
}

std::string WidgetStrings::textOf(std::string_view key, const StringBundle::Form& form) const {
    if (!bundle_) return std::string(key);
    return bundle_->localizedString(key, table,
                                    bundle_->englishText(key, table, form).value_or(std::string(key)), form);
}

std::string WidgetStrings::counted(std::string_view key, std::size_t count) const {
    const auto value = static_cast<std::int64_t>(count);
    const std::string format = textOf(key, {.count = value});
    const L10n::FormatArgument number = value;
    return formattedText(format, {&number, 1}, environment_->locale);
}

}  // namespace hbr
