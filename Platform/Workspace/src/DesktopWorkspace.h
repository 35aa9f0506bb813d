#pragma once

#include "GObjectRef.h"

#include <Workspace/Workspace.h>

#include <mutex>
#include <string>

namespace platform {

/// Asks GIO for the default program; starts it directly, never through a shell.
class DesktopWorkspace final : public Workspace {
  public:
    std::optional<std::string> open(const Url& url) override;
    std::optional<std::string> programForScheme(std::string_view scheme) const override;
    std::optional<std::string> programForContentType(std::string_view contentType) const override;
    std::optional<std::string> startProgramForContentType(std::string_view contentType) override;
    void useActivationToken(const std::string& token) override;

  private:
    /// For one program to be started.
    GObjectRef<GAppLaunchContext> takeContext();

    std::mutex mutex_;
    std::string activationToken_;
};

}  // namespace platform
