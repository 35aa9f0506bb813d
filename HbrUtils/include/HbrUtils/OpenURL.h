#pragma once

#include <HbrUtils/AppURL.h>
#include <TimeAndText/Url.h>
#include <Workspace/Workspace.h>

#include <optional>
#include <string>
#include <string_view>

// Each gives nothing when a program was started, else why not, as one line for the user.
namespace hbr {

std::optional<std::string> openURL(const platform::Url& url,
                                   platform::Workspace& workspace = *platform::Workspace::shared());
std::optional<std::string> openAppURL(AppURL url,
                                      platform::Workspace& workspace = *platform::Workspace::shared());
/// The recipient is put in as it is, so it has to be valid in a URL.
std::optional<std::string> openMailAppWithComposeWindow(
    std::string_view recipient, std::string_view subject, std::string_view message,
    platform::Workspace& workspace = *platform::Workspace::shared());

}  // namespace hbr
