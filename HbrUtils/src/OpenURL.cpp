#include <HbrUtils/OpenURL.h>

namespace hbr {

std::optional<std::string> openURL(const platform::Url& url, platform::Workspace& workspace) {
    return workspace.open(url);
}

}  // namespace hbr
