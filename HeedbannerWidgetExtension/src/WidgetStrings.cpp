#include <HeedbannerWidgetExtension/WidgetStrings.h>

#include <HbrLocalization/TableText.h>

#include <cstdint>
#include <utility>

namespace hbr {

WidgetStrings::WidgetStrings(platform::EnvironmentRef environment)
    : bundle_(StringBundle::of(*environment, bundleName)), environment_(std::move(environment)) {}

std::string WidgetStrings::language() const {
    return bundle_ ? bundle_->language() : std::string("en");
}

std::string WidgetStrings::text(std::string_view key) const {
    return tableText(*environment_, bundleName, key);
}

std::string WidgetStrings::counted(std::string_view key, std::size_t count) const {
    return tableText(*environment_, bundleName, key, {static_cast<std::int64_t>(count)});
}

}  // namespace hbr
