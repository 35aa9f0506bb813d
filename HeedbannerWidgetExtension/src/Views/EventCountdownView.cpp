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

bool isTimer(const Event& event, Date now) {
    return event.startDate.timeIntervalSince(now) / 60 < 1;
}

/// In the last minute and after the start a timer, before that a text that changes every minute.
View countdown(const Event& event, const Formatters& formatters, Date now) {
    if (isTimer(event, now)) return timer(event.startDate);
    return text(formatters.countdownFormatter().string(now, event.startDate).value_or("–"));
}

/// "Next event in 1 hour, 35 minutes." A timer is said by itself.
std::string countdownSentence(const Event& event, const EventViewInputs& inputs, Date now) {
    if (isTimer(event, now)) return {};
    const auto length = inputs.formatters.durationFormatterForAccessibility().string(now, event.startDate);
    return length ? inputs.strings.text("Widget.nextEventCountdown.headline") + " " + *length + ". " : "";
}

}  // namespace

View EventCountdownView::body(const ViewContext& context) const {
    const Palette& palette = context.palette();
    // At the top as the headlines of the lists; the room that is left lies evenly between the parts.
    constexpr double least = 8;
    return link(PreviewEventDeepLink(event.id).url(),
                vstack({.alignment = HorizontalAlignment::leading, .spacing = 0},
                       {
                           widgetHeadline("Widget.nextEventCountdown.headline", inputs.strings, context),
                           spacer(least),
                           countdown(event, inputs.formatters, context.now)
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
        .accessibilityLabel(countdownSentence(event, inputs, context.now) +
                            hbr::accessibilityLabel(event, inputs, context.now));
}

View NextEventCountdownWidgetView::body(const ViewContext& context) const {
    if (entry.event) return EventCountdownView{*entry.event, inputs}.body(context);
    return NoEventsView{inputs.strings.text("Widget.upcomingEvent.noUpcomingEvents")}.body(context);
}

}  // namespace hbr
