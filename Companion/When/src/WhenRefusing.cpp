#include "WhenRefusing.h"

#include <Words/CompanionText.h>

namespace hbr {

void refuseWhen(const platform::Environment& environment, std::string_view key,
                std::initializer_list<L10n::FormatArgument> arguments) {
    throw WhenRefusal(companionText(environment, key, arguments), true);
}

}  // namespace hbr
