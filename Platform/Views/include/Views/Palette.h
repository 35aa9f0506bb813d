#pragma once

#include <Values/Color.h>

namespace platform {

enum class Appearance { light, dark };
enum class Contrast { normal, high };

/// Every colour of the widgets but those of calendars.
struct Palette {
    Appearance appearance = Appearance::light;
    Contrast contrast = Contrast::normal;
    /// Opaque ground of a widget.
    Color container;
    Color border;
    Color primary;
    Color secondary;
    Color orange;
    Color green;
    Color red;
    Color gray;

    static const Palette& of(Appearance appearance, Contrast contrast = Contrast::normal);

    /// The colour of something that cannot be used now.
    static constexpr Color disabled(Color color) { return color.withAlpha(color.alpha * 0.45); }
    /// Contrast ratio that text, symbols, rings and decoration (bars) need.
    double textRatio() const { return contrast == Contrast::high ? 7.0 : 4.5; }
    double symbolRatio() const { return contrast == Contrast::high ? 4.5 : 3.0; }
    double ringRatio() const { return 3.0; }
    double decorationRatio() const { return contrast == Contrast::high ? 3.0 : 1.8; }
};

}  // namespace platform
