#pragma once

#include <TimeAndText/Url.h>

namespace hbr {

/// The target of a link that Google's redirector wraps; any other URL unchanged.
platform::Url unwrappedGoogleRedirectUrl(const platform::Url& url);

}  // namespace hbr
