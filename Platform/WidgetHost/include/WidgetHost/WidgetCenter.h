#pragma once

#include <memory>
#include <string_view>

namespace platform {

/// Takes requests for new timelines. Where no host runs in the process they are dropped. Safe from any
/// thread.
class WidgetCenter {
  public:
    virtual ~WidgetCenter() = default;
    virtual void reloadTimelines(std::string_view ofKind) = 0;

    /// The process's centre: the one installed last, else one that drops every request.
    static std::shared_ptr<WidgetCenter> shared();
    /// nullptr takes it away.
    static void install(std::shared_ptr<WidgetCenter> center);
};

}  // namespace platform
