#pragma once

// Lengths are points; the origin is the top left corner, y grows downwards.
namespace platform {

struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    constexpr Size size() const { return {width, height}; }
    constexpr double right() const { return x + width; }
    constexpr double bottom() const { return y + height; }
    /// The left and top edges belong to it, the right and bottom edges do not.
    constexpr bool contains(Point point) const {
        return point.x >= x && point.x < right() && point.y >= y && point.y < bottom();
    }

    friend bool operator==(const Rect&, const Rect&) = default;
};

/// Leading and trailing follow the language's direction.
struct Insets {
    double top = 0;
    double leading = 0;
    double bottom = 0;
    double trailing = 0;

    static constexpr Insets all(double value) { return {value, value, value, value}; }
    static constexpr Insets symmetric(double horizontal, double vertical) {
        return {vertical, horizontal, vertical, horizontal};
    }
};

enum class Axis { horizontal, vertical };

}  // namespace platform
