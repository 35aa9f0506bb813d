#pragma once

#include <HbrUtils/RawValue.h>
#include <Workspace/Workspace.h>

#include <optional>
#include <string>
#include <string_view>

namespace hbr {

/// Places outside the product; the raw value is the URL.
enum class AppURL {
    writeAppStoreReview,
    sendSupportMail,
    help,
    website,
    tutorialVideo,
    privacyPolicy,
    termsOfUse
};

std::string_view rawValue(AppURL url);
template <>
std::optional<AppURL> fromRawValue<AppURL>(std::string_view text);

// Each gives nothing when a program was started, else why not, as one line for the user.

std::optional<std::string> openAppURL(AppURL url,
                                      platform::Workspace& workspace = *platform::Workspace::shared());
/// The recipient is put in as it is, so it has to be valid in a URL.
std::optional<std::string> openMailAppWithComposeWindow(
    std::string_view recipient, std::string_view subject, std::string_view message,
    platform::Workspace& workspace = *platform::Workspace::shared());

}  // namespace hbr
