#pragma once

#include <cstddef>
#include <functional>

namespace platform {

/// Calls `work` with every number below `count`, each once, in no order, and returns when all are done. Many
/// calls are shared between this thread and others, at most one for each processor; few stay on this
/// thread. `work` must not throw.
void inParallel(std::size_t count, const std::function<void(std::size_t)>& work);

}  // namespace platform
