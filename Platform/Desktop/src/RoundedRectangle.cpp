#include "RoundedRectangle.h"

#include <algorithm>
#include <numbers>

namespace platform {

void addRoundedRectangle(cairo_t* cairo, Rect rect, double radius) {
    constexpr double right = 0, down = std::numbers::pi / 2, left = std::numbers::pi,
                     up = 3 * std::numbers::pi / 2;
    const double r = std::clamp(radius, 0.0, std::min(rect.width, rect.height) / 2);
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, rect.right() - r, rect.y + r, r, up, right + 2 * std::numbers::pi);
    cairo_arc(cairo, rect.right() - r, rect.bottom() - r, r, right, down);
    cairo_arc(cairo, rect.x + r, rect.bottom() - r, r, down, left);
    cairo_arc(cairo, rect.x + r, rect.y + r, r, left, up);
    cairo_close_path(cairo);
}

}  // namespace platform
