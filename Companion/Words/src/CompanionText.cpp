#include <Words/CompanionText.h>

#include <HbrLocalization/TableText.h>

namespace hbr {

namespace {

constexpr std::string_view bundle = "Companion.bundle";

}  // namespace

std::string companionText(const platform::Environment& environment, std::string_view key,
                          std::initializer_list<L10n::FormatArgument> arguments) {
    return tableText(environment, bundle, key, arguments);
}

std::string companionText(const platform::Environment& environment, std::string_view key,
                          std::span<const L10n::FormatArgument> arguments) {
    return tableText(environment, bundle, key, arguments);
}

std::string englishCompanionText(const platform::Environment& environment, std::string_view key,
                                 std::span<const L10n::FormatArgument> arguments) {
    return englishTableText(environment, bundle, key, arguments);
}

std::string companionCount(const platform::Environment& environment, std::string_view key,
                           std::size_t count) {
    return companionText(environment, key, {static_cast<std::int64_t>(count)});
}

}  // namespace hbr
