#pragma once

#include <TimeAndText/Date.h>
#include <TimeAndText/Url.h>
#include <Values/Color.h>
#include <Values/ImageBytes.h>
#include <Views/Font.h>
#include <Views/Geometry.h>
#include <Views/View.h>
#include <Views/ViewContext.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A view in its place. Fields that do not apply to the kind keep their defaults.
struct LaidOutNode {
    enum class Kind { column, row, layers, text, timer, symbol, picture, photo, shape, progress, link };

    Kind kind = Kind::layers;
    /// In points of the whole tree, not of the parent.
    Rect frame;

    /// text, timer: the text before truncation; symbol, picture: its name.
    std::string text;
    int lines = 0;
    bool isTruncated = false;
    Font font;
    /// Below 1 where the text was shrunk to fit.
    double textScale = 1;
    /// What the text may do to fit its frame.
    double minimumScaleFactor = 1;
    bool allowsTightening = false;
    /// As shown in the frame, with "…" where it was cut off; empty when that is `text`.
    std::string truncatedText;
    HorizontalAlignment textAlignment = HorizontalAlignment::leading;
    int lineLimit = 0;
    bool startsWithInk = false;
    /// timer: what it counts to or from.
    std::optional<Date> timerTarget;

    /// Ink or fill.
    std::optional<Color> color;
    /// picture: colour of its accents.
    std::optional<Color> accent;
    std::optional<ImageBytes> image;
    double opacity = 1;
    double cornerRadius = 0;
    bool isHairline = false;
    /// progress: 0 to 1.
    double fraction = 0;

    /// link: what a tap opens; absent while the link cannot be used.
    std::optional<Url> url;
    /// Accessible name; empty when the texts inside say it.
    std::string label;
    bool isAccessibilityHidden = false;

    std::vector<LaidOutNode> children;
};

/// "column", "row", …
std::string_view nameOf(LaidOutNode::Kind kind);

struct TapTarget {
    Url url;
    /// The link's accessible name with the time of a timer inside it, else its texts joined with ", ".
    std::string label;
    Rect frame;

    friend bool operator==(const TapTarget&, const TapTarget&) = default;
};

/// One thing that an assistive technology says.
struct AccessibleElement {
    enum class Role { text, image, link, inactiveLink };

    Role role = Role::text;
    std::string label;
    Rect frame;
    /// link: what it opens.
    std::optional<Url> url;

    friend bool operator==(const AccessibleElement&, const AccessibleElement&) = default;
};

/// The one result of a layout; painters, JSON, tap targets and accessible names read it and nothing else.
struct LaidOutTree {
    Size size;
    WidgetFamily family = WidgetFamily::systemMedium;
    bool isRightToLeft = false;
    LaidOutNode root;
    std::shared_ptr<const PictureLibrary> pictures;
    /// When the view that was laid out would be another one; nothing when it noted no such moment.
    std::optional<Date> changesAt;

    /// Outer links before the links inside them.
    std::vector<TapTarget> links() const;
    /// The innermost link at the point.
    std::optional<TapTarget> linkAt(Point point) const;
    /// What is said, outer before inner. A link says its label, so the texts inside it are not said again;
    /// links inside it are.
    std::vector<AccessibleElement> accessibleElements() const;
    /// Every drawn text once, top to bottom, leading to trailing.
    std::vector<std::string> texts() const;
    /// When a timer of the tree shows another text; nothing without timers. The same view, laid out again,
    /// shows it.
    std::optional<Date> nextTick(Date now) const;
};

/// Proposes `size` to the view and places it in the middle. Text is measured with the calling thread's own
/// fonts, so trees may be made on any thread.
LaidOutTree layOut(const View& view, Size size, const ViewContext& context);

/// A whole widget of the context's family: rounded container, border, content inset by 16.
LaidOutTree layOutWidget(const View& content, const ViewContext& context);

}  // namespace platform
