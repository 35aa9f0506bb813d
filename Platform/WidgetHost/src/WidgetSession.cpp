#include "WidgetSession.h"

#include <System/MainQueue.h>
#include <TimeAndText/JoinedText.h>
#include <TimeAndText/NearestName.h>

#include <optional>
#include <utility>

#include "CommandFailure.h"

namespace platform {

namespace {

/// Runs the main queue until `start`'s completion brings a result.
template <class Result, class Start>
Result waitFor(Start start) {
    auto result = std::make_shared<std::optional<Result>>();
    start([result](Result value) { *result = std::move(value); });
    MainQueue::shared().runUntil([&] { return result->has_value(); });
    return *std::move(*result);
}

}  // namespace

WidgetSession::WidgetSession(const WidgetCommandLine::Program& program, EnvironmentRef environment,
                             bool isDemonstration)
    : environment_(std::move(environment)), bundle_(program.makeBundle(environment_, isDemonstration)) {}

StaticConfiguration WidgetSession::widget(std::string_view name) const {
    std::vector<std::string> names;
    for (StaticConfiguration& widget : widgets()) {
        std::string shortName = bundle_->shortName(widget.kind());
        if (widget.kind() == name || shortName == name) return std::move(widget);
        names.push_back(std::move(shortName));
    }
    throw CommandFailure(exitStatus::failed, "no widget \"" + std::string(name) + "\"" +
                                                 proposal(name, names) + "; there are: " + joined(names));
}

WidgetEntry WidgetSession::placeholder(const StaticConfiguration& widget) const {
    return widget.placeholder({});
}

WidgetEntry WidgetSession::snapshot(const StaticConfiguration& widget) const {
    waitFor<bool>([&](auto completion) { bundle_->prepareSnapshots([completion] { completion(true); }); });
    return waitFor<WidgetEntry>([&](auto completion) { widget.getSnapshot({}, completion); });
}

WidgetTimeline WidgetSession::timeline(const StaticConfiguration& widget, WidgetFamily family) const {
    return waitFor<WidgetTimeline>(
        [&](auto completion) { widget.getTimeline({.family = family}, completion); });
}

}  // namespace platform
