#include "ViewArea.h"

#include <cmath>
#include <string>
#include <utility>

#include "PaintedTree.h"

namespace platform {

namespace {

struct State {
    ViewAreaContent content;
    PaintedTree painted;
    int deviceScale = 0;
};

constexpr const char* stateKey = "view-area-state";

State& stateOf(GtkWidget* area) {
    return *static_cast<State*>(g_object_get_data(G_OBJECT(area), stateKey));
}

void paint(GtkWidget* area, State& state) {
    state.deviceScale = gtk_widget_get_scale_factor(area);
    const double scale = state.content.scale * state.deviceScale;
    state.painted.set(state.content.layOut(scale), scale);
    std::string words;
    for (const std::string& text : state.painted.tree().texts())
        words += (words.empty() ? "" : ", ") + text;
    atk_object_set_name(gtk_widget_get_accessible(area), words.c_str());
}

gboolean draw(GtkWidget* area, cairo_t* cairo, gpointer) {
    State& state = stateOf(area);
    if (state.deviceScale != gtk_widget_get_scale_factor(area)) paint(area, state);
    state.painted.draw(cairo, state.deviceScale);
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
    g_object_set_data_full(G_OBJECT(area), stateKey, new State{std::move(content), {}, 0},
                           [](gpointer state) { delete static_cast<State*>(state); });
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
