#pragma once

#include <TimeAndText/Url.h>

#include <optional>

namespace hbr {

/// Whether the URL's text names Outlook's link-protection redirector (letter case matters).
bool isOutlookSafeLink(const platform::Url& url);
/// The target of a safe link: its first query item "url". Nothing for any other URL, or without a valid
/// target.
std::optional<platform::Url> unwrappedOutlookSafelinkUrl(const platform::Url& url);

}  // namespace hbr
