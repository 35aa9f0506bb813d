#include "CompanionText.h"

#include <HbrLocalization/TableText.h>

namespace hbr {

std::string companionText(const platform::Environment& environment, std::string_view key,
                          std::initializer_list<L10n::FormatArgument> arguments) {
    return tableText(environment, "Companion.bundle", key, arguments);
}

}  // namespace hbr
