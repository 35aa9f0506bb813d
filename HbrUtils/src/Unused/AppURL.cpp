#include <HbrUtils/Unused/AppURL.h>

#include <TimeAndText/Url.h>

#include <array>
#include <utility>

namespace hbr {

namespace {

constexpr std::array<std::pair<AppURL, std::string_view>, 7> addresses{{
    {AppURL::writeAppStoreReview, "https://quietlark.example/heedbanner/review"},
    {AppURL::sendSupportMail, "mailto:support@quietlark.example"},
    {AppURL::help, "https://quietlark.example/heedbanner/help"},
    {AppURL::website, "https://quietlark.example/heedbanner"},
    {AppURL::tutorialVideo, "https://quietlark.example/heedbanner/tutorial"},
    {AppURL::privacyPolicy, "https://quietlark.example/heedbanner/privacy"},
    {AppURL::termsOfUse, "https://quietlark.example/heedbanner/terms"},
}};

std::optional<std::string> openText(const std::string& text, platform::Workspace& workspace) {
    const auto url = platform::Url::parse(text);
    return url ? workspace.open(*url) : "\"" + text + "\" is not a valid link";
}

}  // namespace

std::string_view rawValue(AppURL url) {
    for (const auto& [known, address] : addresses) {
        if (known == url) return address;
    }
    return {};
}

template <>
std::optional<AppURL> fromRawValue<AppURL>(std::string_view text) {
    for (const auto& [known, address] : addresses) {
        if (address == text) return known;
    }
    return std::nullopt;
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
