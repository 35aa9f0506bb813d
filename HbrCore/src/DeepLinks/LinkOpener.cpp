#include <HbrCore/DeepLinks/LinkOpener.h>

#include <HbrLocalization/L10n.h>
#include <HbrUtils/OpenURL.h>
#include <TimeAndText/Ascii.h>
#include <TimeAndText/Text.h>

#include <algorithm>
#include <utility>

namespace hbr {

namespace {

/// Of the programs of Zoom, Microsoft Teams, TeamSpeak and FaceTime.
constexpr std::string_view programSchemes[] = {"zoommtg", "msteams", "ts3server", "facetime",
                                               "facetime-audio"};

bool isWebScheme(std::string_view scheme) {
    return scheme == "https" || scheme == "http";
}

/// The scheme with which every match of the pattern begins; empty when the pattern does not spell it out.
std::string_view literalScheme(std::string_view regex) {
    if (regex.starts_with('^')) regex.remove_prefix(1);
    const auto end = std::ranges::find_if(
        regex, [](char c) { return !(platform::isAsciiLower(c) || platform::isAsciiDigit(c) || c == '-'); });
    if (end == regex.end() || *end != ':') return {};
    return {regex.begin(), end};
}

}  // namespace

LinkOpener::LinkOpener(const std::vector<VideoConferenceService>& services,
                       std::shared_ptr<platform::Workspace> workspace, platform::EnvironmentRef environment)
    : callSchemes_(std::begin(programSchemes), std::end(programSchemes)),
      workspace_(std::move(workspace)),
      environment_(std::move(environment)) {
    for (const auto& service : services) {
        if (const auto scheme = literalScheme(service.regex); !scheme.empty()) callSchemes_.emplace(scheme);
    }
}

std::optional<std::string> LinkOpener::refusal(const platform::Url& url) const {
    namespace Texts = L10n::Opening::Refused;
    const auto written = url.scheme();
    if (!written) return Texts::start(*environment_, url.absoluteString());
    const std::string scheme = platform::lowercased(*written);
    if (isWebScheme(scheme)) {
        if (url.host()) return std::nullopt;
        return Texts::host(*environment_, url.absoluteString());
    }
    if (callSchemes_.contains(scheme)) return std::nullopt;
    return Texts::scheme(*environment_, url.absoluteString(), scheme);
}

std::optional<std::string> LinkOpener::open(const platform::Url& url) const {
    if (auto reason = refusal(url)) return reason;
    auto failure = openURL(url, *workspace_);
    const std::string scheme = platform::lowercased(url.scheme().value_or(""));
    if (failure && !workspace_->programForScheme(scheme))
        return L10n::Opening::noProgram(*environment_, scheme);
    return failure;
}

bool LinkOpener::canOpen(const platform::Url& url) const {
    return !refusal(url) && workspace_->programForScheme(platform::lowercased(url.scheme().value_or("")));
}

}  // namespace hbr
