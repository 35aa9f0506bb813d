#pragma once

#include <CalendarStore/CalendarSources.h>
#include <Values/Color.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ItemScanner.h"

namespace platform {

/// The title and color of a collection, as its source or its first text says.
struct CollectionNaming {
    std::optional<std::string> title;
    std::optional<Color> color;
};
CollectionNaming namingOf(const CalendarCollection& found,
                          const std::vector<std::shared_ptr<const ScannedFile>>& files);

}  // namespace platform
