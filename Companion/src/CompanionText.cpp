#include "CompanionText.h"

#include <HbrLocalization/TableText.h>

namespace hbr {

std::string companionText(const platform::Environment& environment, std::string_view key,
                          std::initializer_list<L10n::FormatArgument> arguments) {
    return tableText(environment, "Companion.bundle", key, arguments);
}

std::string companionCount(const platform::Environment& environment, std::string_view key,
                           std::size_t count) {
    return companionText(environment, key, {static_cast<std::int64_t>(count)});
}

}  // namespace hbr
