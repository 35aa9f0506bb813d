#pragma once

#include <Foundation/RegularExpression.h>
#include <Foundation/Url.h>

#include <string>
#include <string_view>

namespace hbr {

/// The compiled pattern, made once per process; nullptr when it does not compile, which is logged once. The
/// pointer stays valid. Any thread.
const platform::RegularExpression* compiledServicePattern(const std::string& regex);

/// The text that patterns of services are searched in: lower case, of the safe-link target if there is one.
std::string textForServicePatterns(const platform::Url& url);

}  // namespace hbr
