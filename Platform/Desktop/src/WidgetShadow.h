#pragma once

#include <Views/Palette.h>
#include <cairo.h>

#include <memory>

namespace platform {

struct SurfaceRelease {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceRelease>;

/// Around a widget, for its shadow; takes no input. Logical pixels, like all lengths here.
constexpr int shadowMargin = 16;

/// The shadow of a rounded rectangle, blurred once and kept as a mask.
class WidgetShadow {
  public:
    /// Of the widget itself, without the margin.
    struct Shape {
        int width = 0;
        int height = 0;
        double radius = 0;
        /// Device pixels per logical pixel.
        int deviceScale = 1;

        friend bool operator==(const Shape&, const Shape&) = default;
    };

    /// The widget's own corner lies at (margin, margin) of the context.
    void draw(cairo_t* cairo, const Shape& shape, Appearance appearance);

  private:
    Shape shape_;
    Surface mask_;
};

}  // namespace platform
