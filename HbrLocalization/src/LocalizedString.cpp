#include <HbrLocalization/LocalizedString.h>

#include <HbrLocalization/PrintfFormat.h>
#include <HbrLocalization/StringBundle.h>

#include "AccessorText.h"
#include "TextDirection.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <variant>
#include <vector>

namespace hbr {

namespace {

constexpr std::string_view localizable = "Localizable";

struct CurrentBundle {
    platform::EnvironmentRef environment;
    std::shared_ptr<const StringBundle> strings;
};

/// The bundle of the current environment, looked for once per environment.
CurrentBundle currentBundle() {
    static std::mutex mutex;
    static CurrentBundle current;
    auto environment = platform::Environment::current();
    std::lock_guard lock(mutex);
    if (current.environment != environment) {
        auto strings = StringBundle::find(environment, "HbrLocalization_HbrLocalization.bundle");
        if (!strings) {
            std::fputs("unable to find bundle named HbrLocalization_HbrLocalization\n", stderr);
            std::_Exit(EXIT_FAILURE);
        }
        current = {std::move(environment), std::move(strings)};
    }
    return current;
}

}  // namespace

std::string LocalizedString(std::string_view key) {
    return LocalizedString(key, localizable, key);
}

std::string LocalizedString(std::string_view key, std::string_view table, std::string_view defaultText) {
    return currentBundle().strings->localizedString(key, table, defaultText);
}

std::optional<std::string> LocalizedStringOrNil(std::string_view key) {
    return LocalizedStringOrNil(localizable, key);
}

std::optional<std::string> LocalizedStringOrNil(std::string_view table, std::string_view key) {
    auto text = LocalizedString(key, table, key);
    if (text == key) return std::nullopt;
    return text;
}

std::string L10n::accessorText(std::string_view key, std::string_view defaultText,
                               std::initializer_list<FormatArgument> arguments) {
    const auto bundle = currentBundle();
    std::optional<std::int64_t> count;
    std::vector<FormatArgument> inserted(arguments);
    // Reserved once: the arguments refer to these texts.
    std::vector<std::string> isolated;
    isolated.reserve(inserted.size());
    for (auto& argument : inserted) {
        if (const auto* number = std::get_if<std::int64_t>(&argument)) {
            if (!count) count = *number;
        } else if (const auto text = std::get<std::string_view>(argument);
                   runsAgainst(text, bundle.strings->isRightToLeft())) {
            argument = isolated.emplace_back(isolatedText(text));
        }
    }
    return formattedText(bundle.strings->localizedString(key, localizable, defaultText, count), inserted,
                         bundle.environment->locale);
}

}  // namespace hbr
