#include <HeedbannerWidgetExtension/Views/EventPillColors.h>

#include <HbrUtils/Colors.h>
#include <Views/Legibility.h>

namespace hbr {

using namespace platform;

namespace {

/// Own reminders carry the product's colour, which has a shade for each appearance.
Color colorOf(const Event& event, const Palette& palette) {
    const bool isProductColor =
        event.type == Event::EventType::hbrReminder && event.color == Colors::primary();
    return isProductColor ? palette.orange : event.color.withAlpha(1);
}

}  // namespace

EventPillColors::EventPillColors(const Event& event, const Palette& palette) {
    constexpr double fillAlpha = 0.3;
    constexpr double edgeRatio = 1.12;
    const Color color = colorOf(event, palette);
    fill = color.withAlpha(fillAlpha);
    ground = blended(fill, palette.container);
    needsEdge = contrastRatio(ground, palette.container) < edgeRatio;
    edge = palette.primary.withAlpha(0.14);
    primary = palette.primary;
    secondary = legibleSecondary(palette, ground);
    ring = legible(color, ground, palette.ringRatio());
    marker = legible(color, ground, palette.decorationRatio());
}

}  // namespace hbr
