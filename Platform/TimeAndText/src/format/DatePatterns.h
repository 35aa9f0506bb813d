#pragma once

#include <TimeAndText/DateFormatter.h>
#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <memory>
#include <mutex>
#include <string_view>

// ICU patterns of a locale. Constructing goes through shared, partly unlocked caches of ICU: every function
// here is called with the lock that `constructionLock` gives.
namespace platform {

std::unique_lock<std::mutex> constructionLock();

/// Hours as the locale's "hours" keyword wants them, which ICU's own styles ignore.
icu::UnicodeString shortTimePattern(const icu::Locale& locale);
icu::UnicodeString stylePattern(const icu::Locale& locale, DateFormatter::Style date,
                                DateFormatter::Style time);
icu::UnicodeString skeletonPattern(const icu::Locale& locale, std::string_view skeleton);
/// "{1}, {0}": how a medium date and a short time are combined.
icu::UnicodeString dateTimeGlue(const icu::Locale& locale);

/// Writes dates by the pattern in the locale's own calendar. Throws std::runtime_error without ICU's data.
std::unique_ptr<const icu::DateFormat> patternFormat(const icu::Locale& locale, const TimeZone& zone,
                                                     const icu::UnicodeString& pattern);

}  // namespace platform
