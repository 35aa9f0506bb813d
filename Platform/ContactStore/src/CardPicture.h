#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ContactCard.h"

namespace platform {

/// The bytes of the most wanted picture that the text of one card holds; nothing, with a complaint where
/// there is a reason to, when it holds none, or only an address. Line numbers count from `firstLine`.
std::optional<std::string> pictureOf(std::string_view cardText, int firstLine, const CardComplaint& complain);

}  // namespace platform
