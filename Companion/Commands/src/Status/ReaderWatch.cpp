#include "Status/ReaderWatch.h"

#include <glib-unix.h>

#include <utility>

namespace hbr {

struct ReaderWatch::State {
    std::function<void()> action;
    GSource* source = nullptr;

    static gboolean gone(gint, GIOCondition, gpointer data) noexcept {
        // The action may destroy the watch.
        const auto action = static_cast<State*>(data)->action;
        action();
        return G_SOURCE_REMOVE;
    }
};

ReaderWatch::ReaderWatch(int descriptor, std::function<void()> action) : state_(std::make_unique<State>()) {
    state_->action = std::move(action);
    // A pipe without a reader is in an error state, even while nothing is written.
    state_->source =
        g_unix_fd_source_new(descriptor, static_cast<GIOCondition>(G_IO_ERR | G_IO_HUP | G_IO_NVAL));
    g_source_set_callback(state_->source, G_SOURCE_FUNC(State::gone), state_.get(), nullptr);
    g_source_attach(state_->source, nullptr);
}

ReaderWatch::~ReaderWatch() {
    g_source_destroy(state_->source);
    g_source_unref(state_->source);
}

}  // namespace hbr
