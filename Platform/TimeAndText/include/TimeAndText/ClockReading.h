#pragma once

#include <TimeAndText/Calendar.h>
#include <TimeAndText/Date.h>

#include <optional>

namespace platform {

/// Collects the moments at which something that is being made (a drawing, a card, a line of text) will be
/// outdated. Not thread-safe.
class ChangeMoments {
  public:
    void add(Date moment) {
        if (!earliest_ || moment < *earliest_) earliest_ = moment;
    }
    /// Nothing when what was made is true for ever.
    std::optional<Date> earliest() const { return earliest_; }

  private:
    std::optional<Date> earliest_;
};

/// The clock, read once. Each question about it notes the next moment at which the answer will be another
/// one, so that whoever shows the answer knows until when it is true. A plain Date is a reading that notes
/// nothing. Cheap to copy.
class ClockReading {
  public:
    /// What lies "just after" a moment is this many seconds later.
    static constexpr double justAfter = 1e-6;

    ClockReading(Date now) : now_(now) {}
    /// `changes` outlives the reading; may be null.
    ClockReading(Date now, ChangeMoments* changes) : now_(now), changes_(changes) {}

    Date now() const { return now_; }

    /// now >= moment.
    bool hasReached(Date moment) const;
    /// now > moment.
    bool isPast(Date moment) const;
    bool isSameDay(Date other, const Calendar& calendar) const;
    bool isDayBefore(Date other, const Calendar& calendar) const;
    /// For a text that names days relative to today, or a time only on its own day.
    void notesNextDay(const Calendar& calendar) const;

    /// Whole seconds from now to `target`, what has begun of a second cut off; negative once it is past.
    double wholeSecondsUntil(Date target) const;
    /// For a text that shows how often `unit` (seconds) fits between now and `target`.
    void notesNextCount(Date target, double unit) const;
    /// For a text that changes when less than `seconds` are left until `target`.
    void notesLessThan(double seconds, Date target) const;

  private:
    void note(Date moment) const;

    Date now_;
    ChangeMoments* changes_ = nullptr;
};

}  // namespace platform
