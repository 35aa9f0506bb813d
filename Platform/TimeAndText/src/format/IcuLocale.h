#pragma once

#include <TimeAndText/Locale.h>
#include <unicode/locid.h>

namespace platform {

/// The locale of dates, times and numbers.
icu::Locale icuLocale(const Locale& locale);
/// The locale of words: the first of the languages that ICU speaks, with the digits of the formats. Where
/// both name the same language it is the locale of the formats.
icu::Locale icuTextLocale(const Locale& locale);

}  // namespace platform
