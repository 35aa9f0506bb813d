#include "Handover.h"

#include <HbrCore/Events/EventLookup.h>
#include <Values/JsonText.h>
#include <Values/JsonValue.h>

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace hbr {

namespace {

using platform::JsonValue;

/// The number of the open file that holds the handover.
constexpr const char* variable = "HEEDBANNER_HANDOVER";

}  // namespace

Handover Handover::of(const CalendarEventManager& manager, std::vector<HandledAlert> handled) {
    Handover handover{.snoozed = {}, .handled = std::move(handled)};
    for (const AlertInvocation& one : manager.snoozedInvocations())
        handover.snoozed.push_back(HandledAlert::of(one));
    return handover;
}

std::string Handover::text() const {
    return platform::writeJson(
        JsonValue::object().set("snoozed", json(snoozed)).set("handled", json(handled)));
}

std::optional<Handover> Handover::parse(const std::string& text) {
    const auto root = platform::parseJson(text);
    if (!root || !root->asObject()) return std::nullopt;
    return Handover{.snoozed = handledAlerts(root->find("snoozed")),
                    .handled = handledAlerts(root->find("handled"))};
}

std::vector<AlertInvocation> Handover::invocations(const CoreServices& core) const {
    std::vector<AlertInvocation> invocations;
    const EventRefs cached = core.manager().lists()->all();
    for (const HandledAlert& alert : snoozed) {
        const auto same = std::ranges::find_if(cached, [&](const EventRef& event) {
            return event->id == alert.eventId && event->startDate == alert.start;
        });
        if (same != cached.end()) {
            invocations.push_back({alert.alert, *same, true});
        } else if (auto event = eventWithIdentifier(core, alert.eventId)) {
            invocations.push_back({alert.alert, std::make_shared<const Event>(*std::move(event)), true});
        }
    }
    return invocations;
}

std::string restartProgram(char** argv, const Handover& handover) {
    const std::string text = handover.text();
    const int file = memfd_create("heedbanner-handover", MFD_CLOEXEC);
    if (file < 0 || write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        return std::strerror(errno);
    // The new process gets this file and no connection or watch of this one.
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    fcntl(file, F_SETFD, 0);
    setenv(variable, std::to_string(file).c_str(), 1);
    execv("/proc/self/exe", argv);
    const std::string reason = std::strerror(errno);
    unsetenv(variable);
    close(file);
    return reason;
}

std::optional<Handover> takeHandover() {
    const char* number = std::getenv(variable);
    if (!number) return std::nullopt;
    const int file = std::atoi(number);
    unsetenv(variable);
    struct stat status{};
    if (file <= STDERR_FILENO || fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t count = pread(file, text.data(), text.size(), 0);
    close(file);
    if (count != static_cast<ssize_t>(text.size())) return std::nullopt;
    return Handover::parse(text);
}

}  // namespace hbr
