#pragma once

#include <string_view>

namespace platform {

bool isUtf8(std::string_view text);
bool isAscii(std::string_view text);

}  // namespace platform
