#pragma once

#include <WidgetHost/WidgetBundle.h>

#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// The widgets that can be placed, by the names that people type.
class WidgetCatalogue {
  public:
    struct Widget {
        std::string name;
        platform::StaticConfiguration configuration;
    };
    struct Choice {
        std::string name;
        platform::WidgetFamily family;
    };

    explicit WidgetCatalogue(const platform::WidgetBundle& bundle);

    const std::vector<Widget>& all() const { return widgets_; }
    /// By name or kind; nullptr when there is none.
    const Widget* find(std::string_view name) const;
    const Widget* find(std::string_view name, platform::WidgetFamily family) const;
    std::vector<std::string> names() const;
    /// Of "WIDGET:FAMILY" or "WIDGET" (medium). Throws HostFailure with a line that proposes what was meant.
    Choice choice(std::string_view text) const;

  private:
    std::vector<Widget> widgets_;
};

}  // namespace hbr
