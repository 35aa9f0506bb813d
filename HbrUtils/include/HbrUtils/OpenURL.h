#pragma once

#include <TimeAndText/Url.h>
#include <Workspace/Workspace.h>

#include <optional>
#include <string>

namespace hbr {

/// Nothing when a program was started, else why not, as one line for the user.
std::optional<std::string> openURL(const platform::Url& url,
                                   platform::Workspace& workspace = *platform::Workspace::shared());

}  // namespace hbr
