#pragma once

#include <Desktop/DesktopSession.h>

#include <filesystem>
#include <functional>
#include <string>

namespace platform {

/// Lets the user choose an existing folder, in a window in front. `chosen` is called once, or not at all when
/// the user leaves it. `accept`: label of the button that chooses. Main thread.
void chooseFolder(DesktopSession& session, const std::string& title, const std::string& accept,
                  std::function<void(const std::filesystem::path&)> chosen);

}  // namespace platform
