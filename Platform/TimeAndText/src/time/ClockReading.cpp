#include <TimeAndText/ClockReading.h>

#include <cmath>

namespace platform {

void ClockReading::note(Date moment) const {
    if (changes_ && moment > now_) changes_->add(moment);
}

bool ClockReading::hasReached(Date moment) const {
    note(moment);
    return now_ >= moment;
}

bool ClockReading::isPast(Date moment) const {
    note(moment.addingTimeInterval(justAfter));
    return now_ > moment;
}

bool ClockReading::isSameDay(Date other, const Calendar& calendar) const {
    notesNextDay(calendar);
    return calendar.isSameDay(other, now_);
}

bool ClockReading::isDayBefore(Date other, const Calendar& calendar) const {
    notesNextDay(calendar);
    return calendar.isSameDay(other, calendar.addingDays(now_, 1));
}

void ClockReading::notesNextDay(const Calendar& calendar) const {
    if (changes_) note(calendar.startOfDay(calendar.addingDays(calendar.startOfDay(now_), 1)));
}

double ClockReading::wholeSecondsUntil(Date target) const {
    return std::trunc(target.timeIntervalSince(now_));
}

void ClockReading::notesNextCount(Date target, double unit) const {
    const double left = target.timeIntervalSince(now_);
    if (left >= 0) {
        // As long as `count` units fit; then one less.
        const double count = std::floor(left / unit);
        note(target.addingTimeInterval(-count * unit + justAfter));
    } else {
        note(target.addingTimeInterval((std::floor(-left / unit) + 1) * unit));
    }
}

void ClockReading::notesLessThan(double seconds, Date target) const {
    note(target.addingTimeInterval(-seconds + justAfter));
}

}  // namespace platform
