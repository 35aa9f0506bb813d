#include <HbrUtils/AppURL.h>

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

}  // namespace hbr
