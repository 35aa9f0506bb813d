#pragma once

#include <TimeAndText/Date.h>
#include <TimeAndText/Url.h>
#include <Values/Color.h>
#include <Values/ImageBytes.h>
#include <Views/Font.h>
#include <Views/Geometry.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

enum class HorizontalAlignment { leading, center, trailing };
enum class VerticalAlignment { top, center, bottom, firstTextBaseline, lastTextBaseline };

struct Alignment {
    HorizontalAlignment horizontal = HorizontalAlignment::center;
    VerticalAlignment vertical = VerticalAlignment::center;
};

class ViewNode;

/// A description of what to draw: a small immutable value, cheap to copy, built by the functions below and
/// changed by its modifiers, each of which gives a new value. Fonts, colours and line limits hold for all
/// texts inside that set none themselves. An empty view takes no room and no spacing.
class View {
  public:
    View() = default;
    explicit View(std::shared_ptr<const ViewNode> node) : node_(std::move(node)) {}

    bool isEmpty() const { return !node_; }
    const ViewNode* node() const { return node_.get(); }

    [[nodiscard]] View font(Font font) const;
    [[nodiscard]] View bold() const;
    [[nodiscard]] View monospacedDigits() const;
    /// Ink of texts, symbols, shapes and progress rings.
    [[nodiscard]] View foreground(Color color) const;
    /// 0: as many lines as it takes. A text with more is truncated at its end.
    [[nodiscard]] View lineLimit(int lines) const;
    /// A text that is a little too wide has its letters set closer before anything else is tried. Scripts
    /// whose letters join keep theirs.
    [[nodiscard]] View allowsTightening() const;
    /// One line that is drawn smaller, down to this factor, before it is truncated.
    [[nodiscard]] View minimumScaleFactor(double factor) const;
    [[nodiscard]] View multilineTextAlignment(HorizontalAlignment alignment) const;
    /// A text starts with the ink of a "0" on its leading edge instead of with that digit's side bearing.
    [[nodiscard]] View startsWithInk() const;
    /// Symbols and pictures take the size they are offered, keeping the ratio of their sides, instead of
    /// their own.
    [[nodiscard]] View resizable() const;

    [[nodiscard]] View padding(Insets insets) const;
    [[nodiscard]] View frame(std::optional<double> width, std::optional<double> height,
                             Alignment alignment = {}) const;
    /// Takes all the room it is offered along these axes.
    [[nodiscard]] View fillingWidth(HorizontalAlignment alignment = HorizontalAlignment::center) const;
    [[nodiscard]] View filling(Alignment alignment = {}) const;
    /// The width offered, the height that it wants.
    [[nodiscard]] View fixedHeight() const;
    /// Drawn behind, in the same frame.
    [[nodiscard]] View background(View behind) const;
    [[nodiscard]] View opacity(double opacity) const;
    [[nodiscard]] View accessibilityHidden() const;
    [[nodiscard]] View accessibilityLabel(std::string label) const;

  private:
    std::shared_ptr<const ViewNode> node_;
};

struct ColumnOptions {
    HorizontalAlignment alignment = HorizontalAlignment::center;
    double spacing = 8;
};
struct RowOptions {
    VerticalAlignment alignment = VerticalAlignment::center;
    double spacing = 8;
};
struct ShapeOptions {
    /// Cut to half of the shorter side.
    double cornerRadius = 0;
    /// A line inside the edge, of one device pixel, instead of a fill.
    bool isHairline = false;
};

View vstack(ColumnOptions options, std::vector<View> children);
View hstack(RowOptions options, std::vector<View> children);
View zstack(Alignment alignment, std::vector<View> children);

/// Bad UTF-8 is replaced; line breaks and control characters become blanks.
View text(std::string text);
/// "0:59", "12:03", "1:02:03" to `target` or since; draws itself again every second.
View timer(Date target);
/// A mask from symbols/NAME.svg, drawn in the foreground colour.
View symbol(std::string name);
/// From pictures/NAME.svg, its ink in the foreground colour, its accents in `accent`.
View picture(std::string name, Color accent);
/// Fills the room it is offered: cut at its longer sides, never distorted. Nothing is drawn in place of bytes
/// that cannot be decoded or that have far more pixels than any portrait.
View photo(ImageBytes image, double cornerRadius = 0);
View shape(ShapeOptions options);
inline View rectangle(double cornerRadius = 0) {
    return shape({.cornerRadius = cornerRadius});
}
inline View capsule() {
    return shape({.cornerRadius = 1e6});
}
/// A ring filled clockwise from the top; fraction 0 to 1.
View progress(double fraction);
View spacer(double minLength = 0);
View link(Url target, View content);
/// Takes the place of a link and is announced as one that cannot be used now.
View inactiveLink(View content);
/// The first candidate whose ideal extent along the axis fits, else the last.
View firstThatFits(Axis axis, std::vector<View> candidates);

}  // namespace platform
