#include <Desktop/Outputs.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <utility>

#include "GObjects.h"
#include "MonitorNames.h"
#include "Observers.h"

namespace platform {

namespace {

Output::Area area(const GdkRectangle& rectangle) {
    return {rectangle.x, rectangle.y, rectangle.width, rectangle.height};
}

Output describe(GdkDisplay* display, int index) {
    GdkMonitor* monitor = gdk_display_get_monitor(display, index);
    GdkRectangle geometry, workArea;
    gdk_monitor_get_geometry(monitor, &geometry);
    gdk_monitor_get_workarea(monitor, &workArea);
    return {monitorName(display, index), area(geometry), area(workArea),
            gdk_monitor_get_scale_factor(monitor)};
}

}  // namespace

struct Outputs::State {
    explicit State(GdkDisplay* given) : display(given) {
        const auto handler = G_CALLBACK(+[](GdkDisplay*, GdkMonitor*, gpointer self) {
            static_cast<State*>(self)->watchMonitors();
            static_cast<State*>(self)->changed();
        });
        displaySignals.emplace_back(display, "monitor-added", handler, this);
        displaySignals.emplace_back(display, "monitor-removed", handler, this);
        watchMonitors();
    }
    ~State() {
        if (pending) g_source_remove(pending);
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    void watchMonitors() {
        monitorSignals.clear();
        for (int index = 0; index < gdk_display_get_n_monitors(display); ++index) {
            for (const char* signal : {"notify::geometry", "notify::workarea", "notify::scale-factor"}) {
                monitorSignals.emplace_back(gdk_display_get_monitor(display, index), signal,
                                            G_CALLBACK(+[](GdkMonitor*, GParamSpec*, gpointer self) {
                                                static_cast<State*>(self)->changed();
                                            }),
                                            this);
            }
        }
    }

    void changed() {
        if (pending) return;
        pending = g_idle_add_full(
            G_PRIORITY_DEFAULT,
            [](gpointer self) -> gboolean {
                static_cast<State*>(self)->pending = 0;
                static_cast<State*>(self)->observers.notify();
                return G_SOURCE_REMOVE;
            },
            this, nullptr);
    }

    GdkDisplay* display;
    std::vector<SignalConnection> displaySignals;
    std::vector<SignalConnection> monitorSignals;
    Observers observers;
    guint pending = 0;
};

Outputs::Outputs() : state_(std::make_unique<State>(gdk_display_get_default())) {}

Outputs::~Outputs() = default;

std::vector<Output> Outputs::all() const {
    std::vector<Output> outputs;
    GdkDisplay* display = state_->display;
    for (int index = 0; index < gdk_display_get_n_monitors(display); ++index) {
        const bool isMain = gdk_monitor_is_primary(gdk_display_get_monitor(display, index));
        outputs.insert(isMain ? outputs.begin() : outputs.end(), describe(display, index));
    }
    return outputs;
}

std::optional<Output> Outputs::find(std::string_view name) const {
    const auto outputs = all();
    const auto named =
        std::ranges::find_if(outputs, [name](const Output& output) { return output.name == name; });
    if (named != outputs.end()) return *named;
    return outputs.empty() ? std::nullopt : std::optional(outputs.front());
}

std::shared_ptr<void> Outputs::observe(std::function<void()> changed) {
    return state_->observers.add(std::move(changed));
}

}  // namespace platform
