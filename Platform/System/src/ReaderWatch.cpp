#include <System/ReaderWatch.h>

#include "MainSource.h"

#include <glib-unix.h>

#include <utility>

namespace platform {

struct ReaderWatch::State {
    std::function<void()> action;
    MainSource source;

    static gboolean gone(gint, GIOCondition, gpointer data) noexcept {
        // The action may destroy the watch.
        const auto action = static_cast<State*>(data)->action;
        action();
        return G_SOURCE_REMOVE;
    }
};

ReaderWatch::ReaderWatch(int descriptor, std::function<void()> action) : state_(std::make_unique<State>()) {
    state_->action = std::move(action);
    // A pipe without a reader has an error, also while nothing is written.
    state_->source.reset(
        g_unix_fd_source_new(descriptor, static_cast<GIOCondition>(G_IO_ERR | G_IO_HUP | G_IO_NVAL)));
    g_source_set_callback(state_->source.get(), G_SOURCE_FUNC(State::gone), state_.get(), nullptr);
    g_source_attach(state_->source.get(), nullptr);
}

ReaderWatch::~ReaderWatch() = default;

}  // namespace platform
