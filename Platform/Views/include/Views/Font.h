#pragma once

#include <string>

namespace platform {

/// The interface font in one size. Which family that is belongs to the process (see setInterfaceFontFamily).
struct Font {
    /// Points.
    double size = 12;
    bool isBold = false;
    /// All digits equally wide.
    bool hasMonospacedDigits = false;
    /// Points that each line is higher than usual, half of them above it.
    double leading = 0;

    constexpr Font bold() const { return {size, true, hasMonospacedDigits, leading}; }
    constexpr Font monospacedDigits() const { return {size, isBold, true, leading}; }
    constexpr Font leaded(double points) const { return {size, isBold, hasMonospacedDigits, points}; }
    /// Height of one line whatever script is in it; glyphs may reach beyond it.
    double lineHeight() const;
    /// "11", "11 bold", "30 tabular", "10 bold tabular".
    std::string description() const;

    friend bool operator==(const Font&, const Font&) = default;
};

constexpr Font system(double size) {
    return {.size = size};
}
/// For remarks below a list.
constexpr Font captionFont() {
    return system(10);
}

/// Takes the desktop's interface font; empty means the first installed of Inter, Cantarell, Noto Sans and
/// DejaVu Sans. To be called before the first layout.
void setInterfaceFontFamily(std::string family);
std::string interfaceFontFamily();

}  // namespace platform
