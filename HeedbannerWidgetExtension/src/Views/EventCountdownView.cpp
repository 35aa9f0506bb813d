#include <HeedbannerWidgetExtension/Views/EventCountdownView.h>

#include <HbrCore/DeepLinks/DeepLink.h>
#include <HbrUtils/DistanceTexts.h>
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

bool isTimer(const Event& event, const ClockReading& clock) {
    constexpr double minute = 60;
    return clock.isPast(event.startDate.addingTimeInterval(-minute));
}

/// In the last minute and after the start a timer, before that a text that changes every minute.
View countdown(const Event& event, const Formatters& formatters, const ClockReading& clock) {
    if (isTimer(event, clock)) return timer(event.startDate);
    return text(countdownText(event.startDate, clock, formatters).value_or("–"));
}

/// "Next event in 1 hour, 35 minutes." A timer is said by itself.
std::string countdownSentence(const Event& event, const EventViewInputs& inputs, const ClockReading& clock) {
    if (isTimer(event, clock)) return {};
    const auto length = spokenCountdownText(event.startDate, clock, inputs.formatters);
    return length ? inputs.strings.text("Widget.nextEventCountdown.headline") + " " + *length + ". " : "";
}

}  // namespace

View EventCountdownView::body(const ViewContext& context) const {
    const Palette& palette = context.palette();
    // At the top as the headlines of the lists; the room that is left is spread evenly between the parts.
    constexpr double least = 8;
    return link(PreviewEventDeepLink(event.id).url(),
                vstack({.alignment = HorizontalAlignment::leading, .spacing = 0},
                       {
                           widgetHeadline("Widget.nextEventCountdown.headline", inputs.strings, context),
                           spacer(least),
                           countdown(event, inputs.formatters, context.clock())
                               .font(system(30).monospacedDigits())
                               .foreground(legible(palette.orange, palette.container, palette.symbolRatio()))
                               .allowsTightening()
                               .minimumScaleFactor(0.5)
                               .startsWithInk(),
                           spacer(least),
                           EventDetailView{event, context.now, countdownConfiguration, inputs}
                               .body(context)
                               .fixedHeight(),
                       })
                    .filling({.horizontal = HorizontalAlignment::leading}))
        .accessibilityLabel(countdownSentence(event, inputs, context.clock()) +
                            hbr::accessibilityLabel(event, inputs, context.clock()));
}

View NextEventCountdownWidgetView::body(const ViewContext& context) const {
    if (entry.event) return EventCountdownView{*entry.event, inputs}.body(context);
    return NoEventsView{inputs.strings.text("Widget.upcomingEvent.noUpcomingEvents")}.body(context);
}

}  // namespace hbr
