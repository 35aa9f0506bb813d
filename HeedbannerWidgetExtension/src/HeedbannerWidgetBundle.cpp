#include <HeedbannerWidgetExtension/HeedbannerWidgetBundle.h>

#include <HeedbannerWidgetExtension/TimelineProviders.h>
#include <HeedbannerWidgetExtension/Views/EventCountdownView.h>
#include <HeedbannerWidgetExtension/Views/EventListViews.h>
#include <HeedbannerWidgetExtension/WidgetKinds.h>
#include <HeedbannerWidgetExtension/WidgetStrings.h>
#include <System/MainQueue.h>
#include <System/NotificationCenter.h>

#include <initializer_list>
#include <utility>

#include "ReloadObservers.h"

namespace hbr {

using platform::StaticConfiguration;
using platform::View;
using platform::ViewContext;
using platform::WidgetFamily;

/// What the widgets read: events, and the settings of their views.
struct HeedbannerWidgetBundle::World {
    EventSource events;
    std::function<EventViewSettings()> viewSettings;
    std::shared_ptr<const Formatters> formatters;
    WidgetStrings strings;
};

namespace {

EventSource managerEvents(platform::EnvironmentRef environment,
                          const HeedbannerWidgetBundle::Services& services) {
    return {.environment = std::move(environment),
            .upcomingEvents = [services] { return services().manager().lists()->upcoming(); },
            .currentEvents = [services] { return services().manager().lists()->underWay(); },
            .reload =
                [services](std::function<void()> completion) {
                    services().manager().reloadEvents(false, std::move(completion));
                }};
}

EventRefs shared(std::initializer_list<Event> events) {
    EventRefs list;
    for (const Event& event : events)
        list.push_back(std::make_shared<const Event>(event));
    return list;
}

EventSource demonstrationEvents(platform::EnvironmentRef environment) {
    auto demo = std::make_shared<const DemoEvents>(environment);
    return {.environment = std::move(environment),
            .upcomingEvents =
                [demo] {
                    return shared({demo->demo_upcomingEvent1(), demo->demo_upcomingAppleReminderEvent1(),
                                   demo->demo_upcomingEvent2(), demo->demo_upcomingEvent3()});
                },
            .currentEvents = [demo] { return shared({demo->demo_makeOngoingEventForScreenshots()}); },
            .reload =
                [](std::function<void()> completion) {
                    platform::MainQueue::shared().async(std::move(completion));
                }};
}

}  // namespace

HeedbannerWidgetBundle::HeedbannerWidgetBundle(platform::EnvironmentRef environment, Services services)
    : HeedbannerWidgetBundle(std::make_shared<const World>(
          World{.events = managerEvents(environment, services),
                .viewSettings =
                    [services] {
                        return EventViewSettings::read(services().settings(), services().eventSettings());
                    },
                .formatters = std::make_shared<const Formatters>(environment),
                .strings = WidgetStrings(environment)})) {
    observeReloads(platform::NotificationCenter::shared());
}

HeedbannerWidgetBundle::HeedbannerWidgetBundle(std::shared_ptr<const World> world)
    : world_(std::move(world)) {}

HeedbannerWidgetBundle::~HeedbannerWidgetBundle() = default;

std::unique_ptr<HeedbannerWidgetBundle> HeedbannerWidgetBundle::demonstration(
    platform::EnvironmentRef environment) {
    const EventViewSettings settings{.debugScreenshotMode = true};
    World world{.events = demonstrationEvents(environment),
                .viewSettings = [settings] { return settings; },
                .formatters = std::make_shared<const Formatters>(environment),
                .strings = WidgetStrings(environment)};
    return std::unique_ptr<HeedbannerWidgetBundle>(
        new HeedbannerWidgetBundle(std::make_shared<const World>(std::move(world))));
}

std::vector<StaticConfiguration> HeedbannerWidgetBundle::body() const {
    using enum WidgetFamily;
    auto draw = [world = world_](const ViewContext& context, const auto& makeView) {
        const EventViewSettings settings = world->viewSettings();
        const EventViewInputs inputs{settings, *world->formatters, world->strings};
        return makeView(inputs).body(context);
    };
    const StaticConfiguration countdown(std::string(widgetKind::nextEventCountdown),
                                        std::make_shared<const NextEventProvider>(world_->events),
                                        [draw](const NextEventEntry& entry, const ViewContext& context) {
                                            return draw(context, [&](const auto& inputs) {
                                                return NextEventCountdownWidgetView{entry, inputs};
                                            });
                                        });
    const StaticConfiguration upcoming(
        std::string(widgetKind::upcomingEvents),
        std::make_shared<const UpcomingEvetsProvider>(world_->events),
        [draw](const UpcomingEventsEntry& entry, const ViewContext& context) {
            return draw(context, [&](const auto& inputs) { return UpcomingEventsWidgetView{entry, inputs}; });
        });
    const StaticConfiguration current(
        std::string(widgetKind::currentEvents), std::make_shared<const CurrentEvetsProvider>(world_->events),
        [draw](const CurrentEventsEntry& entry, const ViewContext& context) {
            return draw(context, [&](const auto& inputs) { return CurrentEventsWidgetView{entry, inputs}; });
        });
    return {countdown.configurationDisplayName("Widget.nextEventCountdown.displayName")
                .description("Widget.nextEventCountdown.description")
                .supportedFamilies({systemSmall, systemMedium}),
            upcoming.configurationDisplayName("Widget.upcomingEvents.displayName")
                .description("Widget.upcomingEvents.description")
                .supportedFamilies({systemSmall, systemMedium, systemLarge}),
            current.configurationDisplayName("Widget.currentEvents.displayName")
                .description("Widget.currentEvents.description")
                .supportedFamilies({systemSmall, systemMedium, systemLarge})};
}

std::string HeedbannerWidgetBundle::shortName(std::string_view kind) const {
    if (kind == widgetKind::nextEventCountdown) return "countdown";
    if (kind == widgetKind::upcomingEvents) return "upcoming";
    return "current";
}

std::string HeedbannerWidgetBundle::localizedText(std::string_view key) const {
    return world_->strings.text(key);
}
std::string HeedbannerWidgetBundle::language() const {
    return world_->strings.language();
}

void HeedbannerWidgetBundle::prepareSnapshots(std::function<void()> completion) const {
    world_->events.reload(std::move(completion));
}

}  // namespace hbr
