#include <Views/DrawingWork.h>

#include "WorkCounters.h"

namespace platform {

WorkCounters& workCounters() {
    static WorkCounters counters;
    return counters;
}

DrawingWork DrawingWork::soFar() {
    const auto& counters = workCounters();
    return {counters.shapedTexts.load(std::memory_order_relaxed),
            counters.rasterizedPictures.load(std::memory_order_relaxed)};
}

}  // namespace platform
