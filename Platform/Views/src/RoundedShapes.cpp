#include "RoundedShapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace platform {

namespace {

constexpr double quarter = std::numbers::pi / 2;

double cutRadius(const Rect& rect, double radius) {
    return std::min({radius, rect.width / 2, rect.height / 2});
}

/// A corner: where its circle's centre lies and which way the corner points from there.
struct Corner {
    Point center;
    double dx = 0;
    double dy = 0;
    /// Of the arc's begin, which goes on for a quarter.
    double angle = 0;
};

std::array<Corner, 4> cornersOf(const Rect& rect, double radius) {
    return {{{{rect.x + radius, rect.y + radius}, -1, -1, 2 * quarter},
             {{rect.right() - radius, rect.y + radius}, 1, -1, 3 * quarter},
             {{rect.right() - radius, rect.bottom() - radius}, 1, 1, 0},
             {{rect.x + radius, rect.bottom() - radius}, -1, 1, quarter}}};
}

/// From the middle of the corner's one side over the arc to that of the other; `inset` from the edges.
void addCornerLine(cairo_t* cairo, const Corner& corner, double radius, double inset, Point inner) {
    const Point edge = {corner.center.x + corner.dx * (radius - inset),
                        corner.center.y + corner.dy * (radius - inset)};
    const bool startsSideways = corner.dx == corner.dy;
    const Point atSide = {edge.x, inner.y}, atEnd = {inner.x, edge.y};
    const Point& first = startsSideways ? atSide : atEnd;
    const Point& last = startsSideways ? atEnd : atSide;
    cairo_line_to(cairo, first.x, first.y);
    cairo_arc(cairo, corner.center.x, corner.center.y, radius - inset, corner.angle, corner.angle + quarter);
    cairo_line_to(cairo, last.x, last.y);
}

/// Of the corners' squares in whole device pixels; 0 when there is no room for them.
double cornerSide(const RoundedShape& shape, double radius) {
    if (shape.scale <= 0) return 0;
    const double side = std::ceil(radius * shape.scale - 1e-6) / shape.scale;
    return 2 * side <= std::min(shape.rect.width, shape.rect.height) + 1e-6 ? side : 0;
}

Point innerCorner(const Corner& corner, double radius, double side) {
    return {corner.center.x - corner.dx * (side - radius), corner.center.y - corner.dy * (side - radius)};
}

}  // namespace

void addRounded(cairo_t* cairo, const Rect& rect, double radius) {
    const double cut = cutRadius(rect, radius);
    if (cut <= 0) {
        cairo_rectangle(cairo, rect.x, rect.y, rect.width, rect.height);
        return;
    }
    cairo_new_sub_path(cairo);
    for (const auto& corner : cornersOf(rect, cut))
        cairo_arc(cairo, corner.center.x, corner.center.y, cut, corner.angle, corner.angle + quarter);
    cairo_close_path(cairo);
}

void fillRounded(cairo_t* cairo, const RoundedShape& shape) {
    const Rect& rect = shape.rect;
    const double radius = cutRadius(rect, shape.radius);
    const double side = cornerSide(shape, radius);
    if (side <= 0) {
        addRounded(cairo, rect, radius);
        cairo_fill(cairo);
        return;
    }
    cairo_rectangle(cairo, rect.x + side, rect.y, rect.width - 2 * side, rect.height);
    cairo_rectangle(cairo, rect.x, rect.y + side, side, rect.height - 2 * side);
    cairo_rectangle(cairo, rect.right() - side, rect.y + side, side, rect.height - 2 * side);
    cairo_fill(cairo);
    for (const auto& corner : cornersOf(rect, radius)) {
        const Point inner = innerCorner(corner, radius, side);
        cairo_move_to(cairo, inner.x, inner.y);
        addCornerLine(cairo, corner, radius, 0, inner);
        cairo_close_path(cairo);
    }
    cairo_fill(cairo);
}

void strokeRounded(cairo_t* cairo, const RoundedShape& shape, double lineWidth) {
    const Rect& rect = shape.rect;
    const double radius = cutRadius(rect, shape.radius);
    const double side = cornerSide(shape, radius);
    const double inset = lineWidth / 2;
    cairo_set_line_width(cairo, lineWidth);
    if (side <= 0) {
        addRounded(cairo, {rect.x + inset, rect.y + inset, rect.width - lineWidth, rect.height - lineWidth},
                   std::max(0.0, radius - inset));
        cairo_stroke(cairo);
        return;
    }
    cairo_rectangle(cairo, rect.x + side, rect.y, rect.width - 2 * side, lineWidth);
    cairo_rectangle(cairo, rect.x + side, rect.bottom() - lineWidth, rect.width - 2 * side, lineWidth);
    cairo_rectangle(cairo, rect.x, rect.y + side, lineWidth, rect.height - 2 * side);
    cairo_rectangle(cairo, rect.right() - lineWidth, rect.y + side, lineWidth, rect.height - 2 * side);
    cairo_fill(cairo);
    for (const auto& corner : cornersOf(rect, radius)) {
        cairo_new_sub_path(cairo);
        addCornerLine(cairo, corner, radius, inset, innerCorner(corner, radius, side));
    }
    cairo_stroke(cairo);
}

}  // namespace platform
