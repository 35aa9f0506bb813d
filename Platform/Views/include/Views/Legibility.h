#pragma once

#include <Foundation/Color.h>
#include <Views/Palette.h>

namespace platform {

/// `top` painted over an opaque `ground`; opaque.
Color blended(Color top, Color ground);
/// WCAG contrast ratio of two opaque colours, 1 to 21.
double contrastRatio(Color a, Color b);
/// `color` when its contrast on `backdrop` reaches `ratio`, else its hue with the lightness moved away from
/// the backdrop until it does (chroma reduced where the gamut ends); the nearest possible when none does.
Color legible(Color color, Color backdrop, double ratio);
/// The palette's secondary colour, made less transparent until it can be read on `backdrop`; in high
/// contrast black or white, whichever reads better.
Color legibleSecondary(const Palette& palette, Color backdrop);
/// The palette's primary colour; in high contrast black or white, whichever reads better.
Color legiblePrimary(const Palette& palette, Color backdrop);

}  // namespace platform
