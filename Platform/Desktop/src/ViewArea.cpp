#include "ViewArea.h"

#include <cmath>
#include <memory>
#include <string>
#include <utility>

#include "PaintedTree.h"

namespace platform {

namespace {

struct State {
    ViewAreaContent content;
    PaintedTree painted;
    /// 0: to be painted again.
    int deviceScale = 0;
    bool isTick = false;
    std::unique_ptr<WakeSchedule::Alarm> alarm;
};

constexpr const char* stateKey = "view-area-state";

State& stateOf(GtkWidget* area) {
    return *static_cast<State*>(g_object_get_data(G_OBJECT(area), stateKey));
}

void sayTexts(GtkWidget* area, const LaidOutTree& tree) {
    std::string words;
    for (const std::string& text : tree.texts())
        words += (words.empty() ? "" : ", ") + text;
    atk_object_set_name(gtk_widget_get_accessible(area), words.c_str());
}

void paintAgain(GtkWidget* area, State& state) {
    state.deviceScale = gtk_widget_get_scale_factor(area);
    const double scale = state.content.scale * state.deviceScale;
    state.painted.set(state.content.layOut(scale), scale);
    // A clock that ticks does not speak.
    if (!std::exchange(state.isTick, false)) sayTexts(area, state.painted.tree());
}

// From one drawing to the next, so that nothing wakes up for what is not seen.
void awaitChange(State& state) {
    if (!state.alarm) return;
    const LaidOutTree& tree = state.painted.tree();
    const auto tick = tree.nextTick(state.content.wakes->now());
    const bool isTickFirst = tick && (!tree.changesAt || *tick < *tree.changesAt);
    state.alarm->set(isTickFirst ? tick : tree.changesAt);
}

gboolean draw(GtkWidget* area, cairo_t* cairo, gpointer) {
    State& state = stateOf(area);
    if (state.deviceScale != gtk_widget_get_scale_factor(area)) paintAgain(area, state);
    state.painted.draw(cairo, state.deviceScale);
    awaitChange(state);
    return FALSE;
}

}  // namespace

GtkWidget* makeViewArea(ViewAreaContent content) {
    GtkWidget* area = gtk_drawing_area_new();
    const auto whole = [&](double length) { return static_cast<int>(std::ceil(length * content.scale)); };
    gtk_widget_set_size_request(area, whole(content.points.width), whole(content.points.height));
    gtk_widget_set_halign(area, GTK_ALIGN_START);
    gtk_widget_set_valign(area, GTK_ALIGN_START);
    atk_object_set_role(gtk_widget_get_accessible(area), ATK_ROLE_IMAGE);
    g_object_set_data_full(G_OBJECT(area), stateKey, new State{std::move(content), {}, 0, false, nullptr},
                           [](gpointer state) { delete static_cast<State*>(state); });
    State& state = stateOf(area);
    if (state.content.wakes) {
        state.alarm = state.content.wakes->add([area, &state] {
            state.isTick = true;
            refreshViewArea(area);
        });
    }
    g_signal_connect(area, "draw", G_CALLBACK(draw), nullptr);
    return area;
}

void refreshViewArea(GtkWidget* area) {
    State& state = stateOf(area);
    state.painted.forget();
    state.deviceScale = 0;
    gtk_widget_queue_draw(area);
}

}  // namespace platform
