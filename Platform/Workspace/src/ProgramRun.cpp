#include <Workspace/ProgramRun.h>

#include <gio/gio.h>

#include <memory>
#include <utility>

namespace platform {

namespace {

using Ended = std::function<void(ProgramOutcome)>;

template <class T>
using Owned = std::unique_ptr<T, decltype(&g_object_unref)>;

std::string textOf(GBytes* bytes) {
    if (!bytes) return {};
    gsize size = 0;
    const void* data = g_bytes_get_data(bytes, &size);
    std::string text(static_cast<const char*>(data), data ? size : 0);
    g_bytes_unref(bytes);
    return text;
}

std::string messageOf(GError* error) {
    std::string message = error->message;
    g_error_free(error);
    return message;
}

void finish(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Ended> ended(static_cast<Ended*>(data));
    GSubprocess* process = G_SUBPROCESS(source);
    GBytes *output = nullptr, *errors = nullptr;
    GError* error = nullptr;
    if (!g_subprocess_communicate_finish(process, result, &output, &errors, &error)) {
        (*ended)({.isSuccess = false, .output = {}, .errors = messageOf(error)});
        return;
    }
    (*ended)({.isSuccess = g_subprocess_get_successful(process) != FALSE,
              .output = textOf(output),
              .errors = textOf(errors)});
}

}  // namespace

void runProgram(const std::vector<std::string>& command, Ended ended) {
    std::vector<const char*> words;
    for (const std::string& word : command)
        words.push_back(word.c_str());
    words.push_back(nullptr);
    GError* error = nullptr;
    const auto flags = GSubprocessFlags(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_PIPE);
    const Owned<GSubprocess> process(g_subprocess_newv(words.data(), flags, &error), &g_object_unref);
    if (!process) {
        // Later, as where it could be started.
        auto* failed = new std::pair<Ended, std::string>(std::move(ended), messageOf(error));
        g_idle_add(
            [](gpointer data) -> gboolean {
                const std::unique_ptr<std::pair<Ended, std::string>> held(
                    static_cast<std::pair<Ended, std::string>*>(data));
                held->first({.isSuccess = false, .output = {}, .errors = held->second});
                return G_SOURCE_REMOVE;
            },
            failed);
        return;
    }
    g_subprocess_communicate_async(process.get(), nullptr, nullptr, finish, new Ended(std::move(ended)));
}

}  // namespace platform
