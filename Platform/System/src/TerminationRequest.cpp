#include <System/TerminationRequest.h>

#include <glib-unix.h>

#include <array>
#include <csignal>
#include <utility>

namespace platform {

struct TerminationRequest::Sources {
    explicit Sources(std::function<void()> work) : requested(std::move(work)) {
        const std::array signals = {SIGTERM, SIGINT, SIGHUP};
        for (std::size_t i = 0; i < signals.size(); ++i)
            ids[i] = g_unix_signal_add(signals[i], received, this);
    }
    ~Sources() {
        for (const guint id : ids)
            g_source_remove(id);
    }
    Sources(const Sources&) = delete;
    Sources& operator=(const Sources&) = delete;

    static gboolean received(gpointer data) noexcept {
        const auto requested = static_cast<Sources*>(data)->requested;
        requested();
        return G_SOURCE_CONTINUE;
    }

    std::function<void()> requested;
    std::array<guint, 3> ids{};
};

TerminationRequest::TerminationRequest(std::function<void()> requested)
    : sources_(std::make_unique<Sources>(std::move(requested))) {}
TerminationRequest::~TerminationRequest() = default;

}  // namespace platform
