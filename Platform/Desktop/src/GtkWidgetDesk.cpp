#include "GtkWidgetDesk.h"

#include <algorithm>
#include <map>
#include <utility>

namespace platform {

namespace {

/// The nearest top left corner with which the whole widget lies in the area; a widget that is larger starts
/// with the area.
Point within(const Output::Area& area, StackedSize size, Point position) {
    const auto clamped = [](double value, int room) {
        return std::clamp(value, 0.0, std::max(0.0, double(room)));
    };
    return {clamped(position.x, area.width - size.width), clamped(position.y, area.height - size.height)};
}

}  // namespace

std::unique_ptr<WidgetDesk> WidgetDesk::make(DesktopSession& session, Options options) {
    return std::make_unique<GtkWidgetDesk>(session, std::move(options));
}

GtkWidgetDesk::GtkWidgetDesk(DesktopSession& session, Options options)
    : session_(session),
      options_(std::move(options)),
      outputsToken_(session.outputs().observe([this] { restack(); })),
      appearanceToken_(session.appearance().observe([this] { lookChanged(); })),
      presentingToken_(session.observePresenting([this] { lower(); })),
      compositedSignal_(std::make_unique<SignalConnection>(
          gdk_screen_get_default(), "composited-changed",
          G_CALLBACK(+[](GdkScreen*, gpointer self) { static_cast<GtkWidgetDesk*>(self)->lookChanged(); }),
          this)) {
    if (!options_.wakes) options_.wakes = WakeSchedule::onMainQueue(options_.environment->clock);
}

GtkWidgetDesk::~GtkWidgetDesk() {
    if (pendingRestack_) g_source_remove(pendingRestack_);
}

std::unique_ptr<WidgetWindow> GtkWidgetDesk::add(WidgetIdentity identity, WidgetFamily family,
                                                 const WidgetPlacement& placement, WidgetActions actions) {
    auto window =
        std::make_unique<GtkWidgetWindow>(*this, std::move(identity), family, placement, std::move(actions));
    windows_.push_back(window.get());
    if (isLifted_) window->setLevel(WidgetSurface::Level::lifted);
    return window;
}

void GtkWidgetDesk::forget(GtkWidgetWindow& window) {
    std::erase(windows_, &window);
    if (windows_.empty()) isLifted_ = false;
    restackSoon();
}

bool GtkWidgetDesk::isComposited() const {
    return gdk_screen_is_composited(gdk_screen_get_default()) != FALSE;
}

double GtkWidgetDesk::scale() const {
    return options_.widgetScale * session_.appearance().current().textScale;
}

ViewContext GtkWidgetDesk::contextFor(WidgetFamily family) const {
    const DesktopLook look = session_.appearance().current();
    const auto output = session_.outputs().find({});
    return {.family = family,
            .now = options_.environment->now(),
            .locale = options_.environment->locale,
            .isRightToLeft = options_.isRightToLeft,
            .appearance = look.appearance,
            .contrast = look.contrast,
            .scale = scale() * (output ? output->scale : 1),
            .pictures = options_.pictures,
            .changes = std::make_shared<ChangeMoments>()};
}

void GtkWidgetDesk::lookChanged() {
    for (GtkWidgetWindow* window : std::vector(windows_))
        window->lookChanged();
    restack();
}

std::vector<GtkWidgetWindow*> GtkWidgetDesk::inOrder() const {
    auto windows = windows_;
    std::erase_if(windows, [](const GtkWidgetWindow* window) { return !window->hasContent(); });
    std::ranges::stable_sort(windows, {},
                             [](const GtkWidgetWindow* window) { return window->placement().order; });
    return windows;
}

void GtkWidgetDesk::restack() {
    std::map<std::string, std::vector<std::pair<GtkWidgetWindow*, SurfacePlace>>> stacks;
    for (GtkWidgetWindow* window : inOrder()) {
        const WidgetPlacement& placement = window->placement();
        const auto output = session_.outputs().find(placement.output);
        if (!output) {
            window->standAt(std::nullopt);
            continue;
        }
        SurfacePlace place{.output = *output,
                           .corner = placement.corner,
                           .isRightToLeft = options_.isRightToLeft,
                           .size = window->size()};
        // The placement keeps the wish, for when the screen is as large again.
        if (placement.position) place.position = within(output->workArea, place.size, *placement.position);
        if (place.position)
            window->standAt(place);
        else
            stacks[output->name].emplace_back(window, place);
    }
    for (auto& [name, stack] : stacks) {
        std::vector<CornerWidget> widgets;
        for (const auto& [window, place] : stack)
            widgets.push_back({place.isLeft(), place.isTop(), place.size});
        const Output::Area& area = stack.front().second.output.workArea;
        const auto offsets = stackInCorners(widgets, {area.width, area.height});
        for (std::size_t i = 0; i < stack.size(); ++i) {
            stack[i].second.offset = offsets[i];
            stack[i].first->standAt(stack[i].second);
        }
    }
}

void GtkWidgetDesk::restackSoon() {
    if (pendingRestack_) return;
    pendingRestack_ = g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer self) -> gboolean {
            static_cast<GtkWidgetDesk*>(self)->pendingRestack_ = 0;
            static_cast<GtkWidgetDesk*>(self)->restack();
            return G_SOURCE_REMOVE;
        },
        this, nullptr);
}

void GtkWidgetDesk::lift(WidgetWindow* first) {
    const auto windows = inOrder();
    if (windows.empty()) return;
    isLifted_ = true;
    for (GtkWidgetWindow* window : windows)
        window->setLevel(WidgetSurface::Level::lifted);
    const auto chosen =
        std::ranges::find(windows, first, [](GtkWidgetWindow* window) -> WidgetWindow* { return window; });
    giveKeyboard(chosen == windows.end() ? *windows.front() : **chosen, false);
}

void GtkWidgetDesk::giveKeyboard(GtkWidgetWindow& window, bool fromEnd) {
    for (GtkWidgetWindow* other : windows_) {
        if (other != &window) other->setLevel(WidgetSurface::Level::lifted);
    }
    window.setLevel(WidgetSurface::Level::withKeyboard);
    window.focusFirst(fromEnd);
}

void GtkWidgetDesk::moveKeyboard(GtkWidgetWindow& from, int steps) {
    auto windows = inOrder();
    if (steps < 0) std::ranges::reverse(windows);
    const auto position = std::ranges::find(windows, &from);
    if (position == windows.end()) return;
    std::ranges::rotate(windows, position);
    for (std::size_t i = 1; i <= windows.size(); ++i) {
        GtkWidgetWindow& next = *windows[i % windows.size()];
        if (!next.hasTargets()) continue;
        if (&next == &from)
            next.focusFirst(steps < 0);
        else
            giveKeyboard(next, steps < 0);
        return;
    }
}

void GtkWidgetDesk::lower() {
    if (!isLifted_) return;
    isLifted_ = false;
    for (GtkWidgetWindow* window : windows_)
        window->setLevel(WidgetSurface::Level::desktop);
}

WidgetPlacement GtkWidgetDesk::placementAt(Point point, StackedSize size, WidgetPlacement before) const {
    const double middleX = point.x + size.width / 2.0, middleY = point.y + size.height / 2.0;
    const auto outputs = session_.outputs().all();
    if (outputs.empty()) return before;
    auto output = std::ranges::find_if(outputs, [&](const Output& each) {
        const auto& area = each.geometry;
        return middleX >= area.x && middleX < area.x + area.width && middleY >= area.y &&
               middleY < area.y + area.height;
    });
    if (output == outputs.end()) output = outputs.begin();
    const auto& area = output->workArea;
    before.output = output->name;
    before.position = within(area, size, {point.x - area.x, point.y - area.y});
    return before;
}

}  // namespace platform
