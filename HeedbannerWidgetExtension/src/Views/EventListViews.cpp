#include <HeedbannerWidgetExtension/Views/EventListViews.h>

#include <HbrCore/DeepLinks/DeepLink.h>
#include <HeedbannerWidgetExtension/Views/EventDetailView.h>
#include <HeedbannerWidgetExtension/Views/NoEventsView.h>

#include <algorithm>
#include <map>
#include <string_view>

#include "EventAccessibility.h"
#include "WidgetHeadline.h"

namespace hbr {

using namespace platform;

namespace {

/// What the two lists differ in.
struct ListStyle {
    std::string_view headerKey;
    std::size_t longestList = 0;
    bool saysHowManyMore = false;
    bool showsTravelTime = false;
    bool showsEventProgress = false;
};

constexpr ListStyle upcomingStyle = {.headerKey = "Widget.upcomingEvent.nextEvent",
                                     .longestList = 6,
                                     .saysHowManyMore = false,
                                     .showsTravelTime = true,
                                     .showsEventProgress = false};
constexpr ListStyle currentStyle = {.headerKey = "Widget.upcomingEvent.currentEvents",
                                    .longestList = 3,
                                    .saysHowManyMore = true,
                                    .showsTravelTime = false,
                                    .showsEventProgress = true};
constexpr std::string_view moreEventsKey = "^[%lld more events](inflect: true)";

class EventList {
  public:
    EventList(const ListStyle& style, const std::vector<Event>& events, Date now,
              const EventViewInputs& inputs, const ViewContext& context)
        : style_(style), events_(events), now_(now), inputs_(inputs), context_(context) {}

    View body() const {
        return vstack({.alignment = HorizontalAlignment::leading, .spacing = isLarge() ? 10.0 : 5.0},
                      {widgetHeadline(style_.headerKey, inputs_.strings, context_),
                       area().filling(
                           {.horizontal = HorizontalAlignment::leading, .vertical = VerticalAlignment::top})})
            .filling({.horizontal = HorizontalAlignment::leading});
    }

  private:
    bool isLarge() const { return context_.family == WidgetFamily::systemLarge; }

    /// The longest list that fits, with the highest lines that fit.
    View area() const {
        const std::size_t most = std::min(style_.longestList, events_.size());
        std::map<double, std::vector<View>> rowsByLeading;
        std::vector<View> candidates;
        for (std::size_t count = most; count > 0; --count) {
            const View more = overflow(events_.size() - count);
            // Lines are higher where room is left by the longest list, or by a row that did not fit.
            const bool isLongest = count == style_.longestList;
            const bool isFull = style_.saysHowManyMore ? !more.isEmpty() && !isLongest : isLongest;
            for (const double leading : leadings) {
                if (leading > 0 && !isFull) continue;
                auto& rows = rowsByLeading[leading];
                for (std::size_t i = rows.size(); i < most; ++i)
                    rows.push_back(row(events_[i], leading));
                std::vector<View> children(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(count));
                children.push_back(more);
                children.push_back(spacer());
                candidates.push_back(
                    vstack({.alignment = HorizontalAlignment::leading, .spacing = isLarge() ? 6.0 : 3.0},
                           std::move(children)));
            }
        }
        return firstThatFits(Axis::vertical, std::move(candidates));
    }

    /// See Font::leading.
    static constexpr double leadings[] = {4, 2, 0};

    View row(const Event& event, double leading) const {
        const bool small = context_.family == WidgetFamily::systemSmall;
        using Location = EventDetailView::CameraButtonLocation;
        const EventDetailView detail{event,
                                     now_,
                                     {.showsTravelTime = style_.showsTravelTime,
                                      .titleLineLimit = small ? 2 : 1,
                                      .cameraButtonLocation = small ? Location::inline_ : Location::center,
                                      .showsEventProgress = style_.showsEventProgress},
                                     inputs_,
                                     leading};
        return link(PreviewEventDeepLink(event.id).url(), detail.body(context_).fixedHeight())
            .accessibilityLabel(hbr::accessibilityLabel(event, inputs_, context_.clock()) +
                                (style_.showsEventProgress
                                     ? remainingSentence(event, inputs_, context_.clockAt(now_))
                                     : std::string()));
    }

    View overflow(std::size_t hidden) const {
        if (!style_.saysHowManyMore || hidden == 0) return {};
        return text(inputs_.strings.counted(moreEventsKey, hidden))
            .font(captionFont().monospacedDigits())
            .foreground(context_.palette().secondary)
            .lineLimit(1);
    }

    const ListStyle& style_;
    const std::vector<Event>& events_;
    Date now_;
    const EventViewInputs& inputs_;
    const ViewContext& context_;
};

}  // namespace

View UpcomingEventsView::body(const ViewContext& context) const {
    return EventList(upcomingStyle, events, now, inputs, context).body();
}

View CurrentEventsView::body(const ViewContext& context) const {
    return EventList(currentStyle, events, now, inputs, context).body();
}

View UpcomingEventsWidgetView::body(const ViewContext& context) const {
    if (entry.events.empty()) {
        return NoEventsView{inputs.strings.text("Widget.upcomingEvent.noUpcomingEvents")}.body(context);
    }
    return UpcomingEventsView{entry.events, entry.date, inputs}.body(context);
}

View CurrentEventsWidgetView::body(const ViewContext& context) const {
    if (entry.events.empty()) {
        return NoEventsView{inputs.strings.text("Widget.upcomingEvent.noCurrentEvents")}.body(context);
    }
    constexpr int minutesIntoFirstEvent = 12;
    const Calendar& calendar = inputs.formatters.environment().calendar;
    const Date now = inputs.settings.debugScreenshotMode
                         ? calendar.addingMinutes(entry.events.front().startDate, minutesIntoFirstEvent)
                         : entry.date;
    return CurrentEventsView{entry.events, now, inputs}.body(context);
}

}  // namespace hbr
