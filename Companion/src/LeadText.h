#pragma once

#include <cstdint>
#include <string>

namespace hbr {

/// "1h30m before its start", "at its start".
std::string leadText(std::int64_t seconds);

}  // namespace hbr
