#pragma once

#include <Views/View.h>
#include <Views/ViewContext.h>

#include <string>

namespace hbr {

/// The picture with a message under it.
struct NoEventsView {
    std::string title;

    platform::View body(const platform::ViewContext& context) const;
};

}  // namespace hbr
