#pragma once

#include <Workspace/Workspace.h>

namespace platform {

/// Asks GIO for the default program; starts it directly, never through a shell.
class DesktopWorkspace final : public Workspace {
  public:
    std::optional<std::string> open(const Url& url) override;
    std::optional<std::string> programForScheme(std::string_view scheme) const override;
};

}  // namespace platform
