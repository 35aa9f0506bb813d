#include "GtkOutputs.h"

#include <algorithm>

namespace platform {

namespace {

Output::Area area(const GdkRectangle& rectangle) {
    return {rectangle.x, rectangle.y, rectangle.width, rectangle.height};
}

/// The connector's name, which the toolkit only offers through a deprecated call.
std::string connectorName(GdkDisplay* display, int index) {
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    const OwnedText name(gdk_screen_get_monitor_plug_name(gdk_display_get_default_screen(display), index));
    G_GNUC_END_IGNORE_DEPRECATIONS
    if (name) return name.get();
    const char* model = gdk_monitor_get_model(gdk_display_get_monitor(display, index));
    return model ? model : "screen-" + std::to_string(index + 1);
}

}  // namespace

std::optional<Output> Outputs::find(std::string_view name) const {
    const auto outputs = all();
    const auto named =
        std::ranges::find_if(outputs, [name](const Output& output) { return output.name == name; });
    if (named != outputs.end()) return *named;
    return outputs.empty() ? std::nullopt : std::optional(outputs.front());
}

GtkOutputs::GtkOutputs(GdkDisplay* display) : display_(display) {
    const auto handler = G_CALLBACK(+[](GdkDisplay*, GdkMonitor*, gpointer self) {
        static_cast<GtkOutputs*>(self)->watchMonitors();
        static_cast<GtkOutputs*>(self)->changed();
    });
    displaySignals_.emplace_back(display, "monitor-added", handler, this);
    displaySignals_.emplace_back(display, "monitor-removed", handler, this);
    watchMonitors();
}

GtkOutputs::~GtkOutputs() {
    if (pending_) g_source_remove(pending_);
}

void GtkOutputs::watchMonitors() {
    monitorSignals_.clear();
    for (int index = 0; index < gdk_display_get_n_monitors(display_); ++index) {
        for (const char* signal : {"notify::geometry", "notify::workarea", "notify::scale-factor"}) {
            monitorSignals_.emplace_back(gdk_display_get_monitor(display_, index), signal,
                                         G_CALLBACK(+[](GdkMonitor*, GParamSpec*, gpointer self) {
                                             static_cast<GtkOutputs*>(self)->changed();
                                         }),
                                         this);
        }
    }
}

void GtkOutputs::changed() {
    if (pending_) return;
    pending_ = g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer self) -> gboolean {
            static_cast<GtkOutputs*>(self)->pending_ = 0;
            static_cast<GtkOutputs*>(self)->observers_.notify();
            return G_SOURCE_REMOVE;
        },
        this, nullptr);
}

Output GtkOutputs::describe(int index) const {
    GdkMonitor* monitor = gdk_display_get_monitor(display_, index);
    GdkRectangle geometry, workArea;
    gdk_monitor_get_geometry(monitor, &geometry);
    gdk_monitor_get_workarea(monitor, &workArea);
    return {connectorName(display_, index), area(geometry), area(workArea),
            gdk_monitor_get_scale_factor(monitor)};
}

std::vector<Output> GtkOutputs::all() const {
    std::vector<Output> outputs;
    for (int index = 0; index < gdk_display_get_n_monitors(display_); ++index) {
        const bool isMain = gdk_monitor_is_primary(gdk_display_get_monitor(display_, index));
        outputs.insert(isMain ? outputs.begin() : outputs.end(), describe(index));
    }
    return outputs;
}

GdkMonitor* GtkOutputs::monitor(std::string_view name) const {
    for (int index = 0; index < gdk_display_get_n_monitors(display_); ++index) {
        if (connectorName(display_, index) == name) return gdk_display_get_monitor(display_, index);
    }
    return nullptr;
}

std::shared_ptr<void> GtkOutputs::observe(std::function<void()> changed) {
    return observers_.add(std::move(changed));
}

}  // namespace platform
