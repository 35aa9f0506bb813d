#pragma once

#include <System/Environment.h>
#include <WidgetHost/WidgetBundle.h>
#include <WidgetHost/WidgetCommandLine.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// One command's view of a bundle: finds widgets by name and waits for their answers on the main queue.
class WidgetSession {
  public:
    WidgetSession(const WidgetCommandLine::Program& program, EnvironmentRef environment,
                  bool isDemonstration);

    const EnvironmentRef& environment() const { return environment_; }
    const WidgetBundle& bundle() const { return *bundle_; }
    std::vector<StaticConfiguration> widgets() const { return bundle_->body(); }
    /// By short name or kind; an unknown one fails with a line that lists what there is.
    StaticConfiguration widget(std::string_view name) const;

    WidgetEntry placeholder(const StaticConfiguration& widget) const;
    WidgetEntry snapshot(const StaticConfiguration& widget) const;
    WidgetTimeline timeline(const StaticConfiguration& widget, WidgetFamily family) const;

  private:
    EnvironmentRef environment_;
    std::unique_ptr<WidgetBundle> bundle_;
};

}  // namespace platform
