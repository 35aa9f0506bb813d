#pragma once

#include <TimeAndText/Calendar.h>
#include <TimeAndText/Date.h>
#include <TimeAndText/Locale.h>

#include <memory>
#include <string>

namespace platform {

/// "in 5 minutes", "2 hours ago"; the largest unit that differs, cut off.
/// Made once (0.1 to 4 ms), then immutable and safe from any thread.
class RelativeDateTimeFormatter {
  public:
    RelativeDateTimeFormatter(const Locale& locale, const Calendar& calendar);
    std::string string(Date date, Date relativeTo) const;

  private:
    struct Engine;
    std::shared_ptr<const Engine> engine_;
};

}  // namespace platform
