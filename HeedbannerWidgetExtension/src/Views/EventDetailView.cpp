#include <HeedbannerWidgetExtension/Views/EventDetailView.h>

#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>
#include <HbrLocalization/LocalizedString.h>
#include <HbrUtils/DistanceTexts.h>
#include <HeedbannerWidgetExtension/Views/CameraButton.h>
#include <HeedbannerWidgetExtension/Views/ConditionalStack.h>
#include <TimeAndText/Text.h>

namespace hbr {

using namespace platform;

namespace {

constexpr double pillRadius = 3;
constexpr double markerWidth = 10;

bool isSmall(const ViewContext& context) {
    return context.family == WidgetFamily::systemSmall;
}

bool isLarge(const ViewContext& context) {
    return context.family == WidgetFamily::systemLarge;
}

/// At the top of the row's height.
View topSymbol(std::string name, double top) {
    return vstack({.spacing = 0},
                  {symbol(std::move(name)).resizable().frame(markerWidth, std::nullopt).padding({.top = top}),
                   spacer()});
}

/// One line that rather becomes smaller than that anything of it is lost.
View fittedLine(std::string content) {
    return text(std::move(content))
        .monospacedDigits()
        .lineLimit(1)
        .allowsTightening()
        .minimumScaleFactor(0.5);
}

}  // namespace

View EventDetailView::body(const ViewContext& context) const {
    const EventPillColors colors(event, context.palette());
    const View camera = configuration.cameraButtonLocation == CameraButtonLocation::center
                            ? cameraButton(context, colors)
                            : View();
    const View edge = colors.needsEdge
                          ? shape({.cornerRadius = pillRadius, .isHairline = true}).foreground(colors.edge)
                          : View();
    const double vertical = isLarge(context) ? 4 : 2;
    return hstack({.alignment = VerticalAlignment::center, .spacing = 4},
                  {marker(colors), textBlock(context, colors), camera})
        .padding({.top = vertical, .leading = 12, .bottom = vertical})
        .padding({.trailing = 4})
        .background(zstack({}, {rectangle(pillRadius).foreground(colors.fill), edge}))
        .font(system(11).leaded(leading))
        .foreground(colors.primary);
}

View EventDetailView::marker(const EventPillColors& colors) const {
    View marker;
    Color color = colors.marker;
    switch (event.type) {
        case Event::EventType::calendarEvent:
            marker = rectangle(2).frame(3, std::nullopt);
            break;
        case Event::EventType::appleReminder:
            marker = topSymbol("circle", 5);
            color = colors.ring;
            break;
        case Event::EventType::hbrReminder:
            marker = topSymbol("alarm.fill", 4);
            break;
    }
    return marker.foreground(color).accessibilityHidden();
}

View EventDetailView::textBlock(const ViewContext& context, const EventPillColors& colors) const {
    const bool small = isSmall(context);
    const View titleRow = hstack({.alignment = VerticalAlignment::center, .spacing = 0},
                                 {
                                     text(event.title.value_or(""))
                                         .bold()
                                         .lineLimit(configuration.titleLineLimit)
                                         .multilineTextAlignment(HorizontalAlignment::leading),
                                     spacer(),
                                 });
    std::vector<View> details = {vstack({.alignment = HorizontalAlignment::leading, .spacing = 0},
                                        {dayAndTime(context, colors), travelTime(context)})};
    if (configuration.cameraButtonLocation == CameraButtonLocation::inline_) {
        const View camera = cameraButton(context, colors);
        if (!camera.isEmpty()) {
            details.push_back(spacer(4));
            details.push_back(camera);
        }
    }
    const View progress = progressLine(context, colors);
    if (!small) details.push_back(progress);
    const View detailsRow =
        hstack({.alignment = small ? VerticalAlignment::center : VerticalAlignment::lastTextBaseline},
               std::move(details));
    return vstack({.alignment = HorizontalAlignment::leading, .spacing = isLarge(context) ? 4.0 : 0.0},
                  {titleRow, detailsRow, small ? progress : View()});
}

View EventDetailView::dayAndTime(const ViewContext& context, const EventPillColors& colors) const {
    const bool isRow = !isSmall(context);
    return ConditionalStack{
        .isHorizontal = isRow,
        .horizontalAlignment = HorizontalAlignment::leading,
        .verticalAlignment = VerticalAlignment::center,
        .horizontalSpacing = 0,
        .verticalSpacing = 0,
        .content = {fittedLine(dayLabel(context) + (isRow ? ", " : "")).bold().foreground(colors.secondary),
                    fittedLine(timeText())},
    }
        .body();
}

std::string EventDetailView::dayLabel(const ViewContext& context) const {
    const Environment& environment = inputs.formatters.environment();
    const Calendar& calendar = environment.calendar;
    const Date day = event.occurrenceDate.value_or(event.startDate);
    if (context.clock().isSameDay(day, calendar))
        return capitalizedFirstLetter(L10n::TimeFormat::today(environment), textLanguage(environment));
    if (context.clock().isDayBefore(day, calendar))
        return capitalizedFirstLetter(L10n::TimeFormat::tomorrow(environment), textLanguage(environment));
    return capitalizedFirstLetter(inputs.formatters.dateOnlyNoYearWeekDay().string(day),
                                  context.locale.identifier);
}

std::string EventDetailView::timeText() const {
    const DateFormatter& timeOnly = inputs.formatters.timeOnly();
    const std::string start = timeOnly.string(event.startDate);
    const Calendar& calendar = inputs.formatters.environment().calendar;
    if (event.startDate == event.endDate || !calendar.isSameDay(event.startDate, event.endDate)) return start;
    return start + "–" + timeOnly.string(event.endDate);
}

View EventDetailView::travelTime(const ViewContext& context) const {
    if (event.travelTime == 0 || !inputs.settings.includeTravelTime) return {};
    const auto duration = inputs.formatters.durationFormatter().string(event.travelTime);
    if (!duration) return {};
    return hstack({.alignment = VerticalAlignment::firstTextBaseline, .spacing = 4},
                  {
                      symbol("car.fill").resizable().frame(14, 14).accessibilityHidden(),
                      fittedLine(isSmall(context)
                                     ? *duration
                                     : L10n::General::travelTime(inputs.formatters.environment(), *duration)),
                  });
}

View EventDetailView::progressLine(const ViewContext& context, const EventPillColors& colors) const {
    const ClockReading clock = context.clockAt(now);
    if (!configuration.showsEventProgress || !isCurrentEvent(event, clock)) return {};
    return hstack({.alignment = VerticalAlignment::center, .spacing = 4},
                  {
                      progress(eventProgress(event, clock))
                          .frame(12, 12)
                          .foreground(colors.ring)
                          .accessibilityHidden(),
                      fittedLine(timeRemainingText(event.endDate, clock, inputs.formatters).value_or("")),
                  })
        .padding({.top = 4, .bottom = 2});
}

View EventDetailView::cameraButton(const ViewContext& context, const EventPillColors& colors) const {
    if (event.videoConferenceLinks.empty()) return {};
    const bool pending = isPending(event, inputs.settings.timeOffset,
                                   inputs.settings.customSettings(event.id), context.clockAt(now));
    return CameraButton{event, now, pending, inputs.formatters.environment()}.body(context, colors.ground);
}

}  // namespace hbr
