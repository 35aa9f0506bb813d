#pragma once

#include <cstdint>

namespace platform {

/// Changes whenever another interface font family was set; caches of measures compare it.
std::uint64_t interfaceFontGeneration();

}  // namespace platform
