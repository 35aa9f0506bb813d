#include <HbrUtils/Unused/BundleVersion.h>

namespace hbr {

namespace {

std::optional<std::string> textFor(const platform::Bundle& bundle, const char* key) {
    const auto* value = bundle.infoDictionary().find(key);
    const auto* text = value ? value->asString() : nullptr;
    return text ? std::optional(*text) : std::nullopt;
}

}  // namespace

std::optional<std::string> bundleVersionString(const platform::Bundle& bundle) {
    return textFor(bundle, "CFBundleVersion");
}

std::optional<std::string> shortVersionString(const platform::Bundle& bundle) {
    return textFor(bundle, "CFBundleShortVersionString");
}

}  // namespace hbr
