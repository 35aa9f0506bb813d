#include <HbrUtils/OpenURL.h>

namespace hbr {

namespace {

std::optional<std::string> openText(const std::string& text, platform::Workspace& workspace) {
    const auto url = platform::Url::parse(text);
    return url ? workspace.open(*url) : "\"" + text + "\" is not a valid link";
}

}  // namespace

std::optional<std::string> openURL(const platform::Url& url, platform::Workspace& workspace) {
    return workspace.open(url);
}

std::optional<std::string> openAppURL(AppURL url, platform::Workspace& workspace) {
    return openText(std::string(rawValue(url)), workspace);
}

std::optional<std::string> openMailAppWithComposeWindow(std::string_view recipient, std::string_view subject,
                                                        std::string_view message,
                                                        platform::Workspace& workspace) {
    return openText("mailto:" + std::string(recipient) +
                        "?subject=" + platform::percentEncodedForQuery(subject) +
                        "&body=" + platform::percentEncodedForQuery(message),
                    workspace);
}

}  // namespace hbr
