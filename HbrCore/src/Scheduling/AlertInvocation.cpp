#include <HbrCore/Scheduling/AlertInvocation.h>

#include <charconv>

namespace hbr {

namespace {

/// The shortest decimal text that reads back to the same value, always with a point.
std::string exactText(double value) {
    char buffer[400];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed).ptr;
    std::string text(buffer, end);
    if (text.find('.') == std::string::npos) text += ".0";
    return text;
}

}  // namespace

std::string AlertInvocation::idOf(const Event& event, platform::Date date) {
    return event.id + "." + exactText(date.timeIntervalSince1970());
}

std::string AlertInvocation::debugDescription() const {
    return event->title.value_or("untitled event") + ", " + date.description() +
           ", isSnooze: " + (isSnooze ? "true" : "false");
}

}  // namespace hbr

std::size_t std::hash<hbr::AlertInvocation>::operator()(
    const hbr::AlertInvocation& invocation) const noexcept {
    std::size_t result = std::hash<double>{}(invocation.date.timeIntervalSinceReferenceDate());
    result = result * 31 + std::hash<std::string>{}(invocation.event->id);
    return result * 31 + (invocation.isSnooze ? 1 : 0);
}
