#pragma once

#include <Values/Color.h>
#include <Views/Palette.h>

namespace platform {

/// `top` painted over an opaque `ground`; opaque.
Color blended(Color top, Color ground);
/// WCAG contrast ratio of two opaque colours, 1 to 21.
double contrastRatio(Color a, Color b);
/// `color` when its contrast on `backdrop` reaches `ratio`, else its hue with the lightness moved away from
/// the backdrop until it does (darker on a light one, lighter on a dark one; chroma reduced where the gamut
/// ends). Black or white when nothing on the way does.
Color legible(Color color, Color backdrop, double ratio);
/// A translucent colour, made less transparent until its contrast on `backdrop` reaches `ratio`; opaque when
/// nothing on the way does.
Color legibleTranslucent(Color color, Color backdrop, double ratio);
/// The palette's secondary colour, made less transparent until it can be read on `backdrop`.
Color legibleSecondary(const Palette& palette, Color backdrop);

}  // namespace platform
