#pragma once

#include <Workspace/Workspace.h>

namespace platform {

/// Asks GIO for the default program; starts it directly, never through a shell.
class DesktopWorkspace final : public Workspace {
  public:
    std::optional<std::string> open(const Url& url) override;
    std::optional<std::string> programForScheme(std::string_view scheme) const override;
    std::optional<std::string> programForContentType(std::string_view contentType) const override;
    std::optional<std::string> startProgramForContentType(std::string_view contentType) override;
};

}  // namespace platform
