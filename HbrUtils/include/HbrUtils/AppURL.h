#pragma once

#include <HbrUtils/RawValue.h>

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

}  // namespace hbr
