#pragma once

#include <System/Environment.h>

#include <cstdint>
#include <string>

namespace hbr {

/// "1h 30m before its start", "at its start".
std::string leadText(std::int64_t seconds, const platform::Environment& environment);

}  // namespace hbr
