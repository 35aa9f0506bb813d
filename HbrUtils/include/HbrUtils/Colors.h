#pragma once

#include <Values/Color.h>

namespace hbr::Colors {

/// The product's own colour.
constexpr platform::Color primary() {
    return {0.94, 0.6, 0.05, 1};
}

}  // namespace hbr::Colors
