#pragma once

#include <HbrUtils/Formatters.h>

#include <HbrCore/Explanation/EventExplanation.h>
#include <string>

namespace hbr {

/// A reason in the user's language, safe for a terminal line.
std::string reasonText(const Reason& reason, const Formatters& formatters, platform::Date now);

/// The same for JSON: in English, with moments and lengths in the user's formats and texts unchanged.
std::string englishReasonText(const Reason& reason, const Formatters& formatters, platform::Date now);

}  // namespace hbr
