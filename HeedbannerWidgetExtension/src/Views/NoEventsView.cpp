#include <HeedbannerWidgetExtension/Views/NoEventsView.h>

#include <Views/Legibility.h>

namespace hbr {

using namespace platform;

View NoEventsView::body(const ViewContext& context) const {
    const Palette& palette = context.palette();
    return vstack({.alignment = HorizontalAlignment::center, .spacing = 10},
                  {
                      picture("noevents", palette.orange)
                          .resizable()
                          .frame(std::nullopt, 50)
                          // Opaque, so that the accents keep their strength.
                          .foreground(blended(palette.secondary, palette.container))
                          .opacity(0.9)
                          .accessibilityHidden(),
                      text(title)
                          .multilineTextAlignment(HorizontalAlignment::center)
                          .font(system(12))
                          .foreground(palette.secondary),
                  })
        .filling();
}

}  // namespace hbr
