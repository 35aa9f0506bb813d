#include <HbrCore/Events/Reminder.h>

#include <HbrLocalization/L10n.h>

#include <utility>

namespace hbr {

using platform::JsonValue;

Reminder::Reminder(std::string id, platform::Date date, std::optional<std::string> title,
                   std::optional<std::string> notes, std::int64_t timeOffsetSeconds)
    : id_(std::move(id)),
      date_(date),
      title_(std::move(title)),
      notes_(std::move(notes)),
      timeOffsetSeconds_(timeOffsetSeconds) {}

Reminder Reminder::addingTimeInterval(double seconds) const {
    return {id_, date_.addingTimeInterval(seconds), title_, notes_, timeOffsetSeconds_};
}

std::string Reminder::localizedTitle() const {
    return localizedTitle(*platform::Environment::current());
}

std::string Reminder::localizedTitle(const platform::Environment& environment) const {
    return title_ ? *title_ : "(" + L10n::General::untitled(environment) + ")";
}

std::string Reminder::formattedDate(const Formatters& formatters) const {
    return formatters.longDateAndTime().string(date_);
}

std::string Reminder::debugDescription() const {
    return "Reminder (" + id_ + ")\n    date: " + date_.description() +
           "\n    title: " + title_.value_or("") + "\n    notes: " + notes_.value_or("") +
           "\n    timeOffsetSeconds: " + std::to_string(timeOffsetSeconds_);
}

JsonValue JsonCoding<Reminder>::encode(const Reminder& reminder) {
    JsonValue record = JsonValue::object();
    record.set("id", reminder.id())
        .set("date", reminder.date().timeIntervalSinceReferenceDate())
        .setIfPresent("title", reminder.title())
        .setIfPresent("notes", reminder.notes())
        .set("timeOffsetSeconds", reminder.timeOffsetSeconds());
    return record;
}

Reminder JsonCoding<Reminder>::decode(const JsonValue& json) {
    const platform::KeyedDecoder record(json);
    return {record.string("id"), platform::Date(record.number("date")), record.optionalString("title"),
            record.optionalString("notes"), record.integer("timeOffsetSeconds")};
}

}  // namespace hbr
