#include "ActionSignal.h"

#include <utility>

namespace platform {

void onSignal(gpointer instance, const char* signal, std::function<void()> action) {
    using Action = std::function<void()>;
    g_signal_connect_data(
        instance, signal, G_CALLBACK(+[](gpointer, gpointer data) {
            const Action called = *static_cast<Action*>(data);
            called();
        }),
        new Action(std::move(action)), [](gpointer data, GClosure*) { delete static_cast<Action*>(data); },
        G_CONNECT_AFTER);
}

}  // namespace platform
