#include <HeedbannerWidgetExtension/Views/EventCountdownView.h>

#include <HbrCore/DeepLinks/DeepLink.h>
#include <HeedbannerWidgetExtension/Views/EventDetailView.h>
#include <HeedbannerWidgetExtension/Views/NoEventsView.h>
#include <Views/Legibility.h>

#include "EventAccessibility.h"
#include "WidgetHeadline.h"

namespace hbr {

using namespace platform;

namespace {

constexpr EventDetailView::Configuration countdownConfiguration = {
    .showsTravelTime = false,
    .titleLineLimit = 2,
    .cameraButtonLocation = EventDetailView::CameraButtonLocation::center,
    .showsEventProgress = false,
};

/// In the last minute and after the start a timer, before that a text that changes every minute.
View countdown(const Event& event, const Formatters& formatters, Date now) {
    if (event.startDate.timeIntervalSince(now) / 60 < 1) return timer(event.startDate);
    return text(formatters.countdownFormatter().string(now, event.startDate).value_or("–"));
}

}  // namespace

View EventCountdownView::body(const ViewContext& context) const {
    const Palette& palette = context.palette();
    return link(PreviewEventDeepLink(event.id).url(),
                vstack({.alignment = HorizontalAlignment::leading},
                       {
                           widgetHeadline("Widget.nextEventCountdown.headline", inputs.strings, context),
                           countdown(event, inputs.formatters, context.now)
                               .font(system(30).monospacedDigits())
                               .foreground(legible(palette.orange, palette.container, palette.symbolRatio()))
                               .allowsTightening()
                               .minimumScaleFactor(0.5)
                               .startsWithInk(),
                           EventDetailView{event, context.now, countdownConfiguration, inputs}
                               .body(context)
                               .fixedHeight(),
                       })
                    .filling({.horizontal = HorizontalAlignment::leading}))
        .accessibilityLabel(hbr::accessibilityLabel(event, inputs, context.now));
}

View NextEventCountdownWidgetView::body(const ViewContext& context) const {
    if (entry.event) return EventCountdownView{*entry.event, inputs}.body(context);
    return NoEventsView{inputs.strings.text("Widget.upcomingEvent.noUpcomingEvents")}.body(context);
}

}  // namespace hbr
