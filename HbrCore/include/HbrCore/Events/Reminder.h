#pragma once

#include <HbrUtils/Formatters.h>
#include <HbrUtils/JsonCoding.h>
#include <TimeAndText/Date.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace hbr {

/// A reminder that the product keeps itself. Immutable; equal when the ids are.
class Reminder {
  public:
    Reminder(std::string id, platform::Date date, std::optional<std::string> title,
             std::optional<std::string> notes, std::int64_t timeOffsetSeconds);

    const std::string& id() const { return id_; }
    platform::Date date() const { return date_; }
    const std::optional<std::string>& title() const { return title_; }
    const std::optional<std::string>& notes() const { return notes_; }
    /// The alert comes this many seconds before the date.
    std::int64_t timeOffsetSeconds() const { return timeOffsetSeconds_; }

    bool isEqual(const Reminder& other) const { return id_ == other.id_; }
    Reminder addingTimeInterval(double seconds) const;
    /// The title, else the word for "untitled" in parentheses, of Environment::current() without another.
    std::string localizedTitle(const platform::Environment& environment) const;
    std::string localizedTitle() const;
    /// Long date, short time.
    std::string formattedDate(const Formatters& formatters) const;
    std::string debugDescription() const;

    friend bool operator==(const Reminder& a, const Reminder& b) { return a.isEqual(b); }

  private:
    std::string id_;
    platform::Date date_;
    std::optional<std::string> title_;
    std::optional<std::string> notes_;
    std::int64_t timeOffsetSeconds_;
};

template <>
struct JsonCoding<Reminder> {
    static platform::JsonValue encode(const Reminder& reminder);
    static Reminder decode(const platform::JsonValue& json);
};

}  // namespace hbr

template <>
struct std::hash<hbr::Reminder> {
    std::size_t operator()(const hbr::Reminder& reminder) const noexcept {
        return std::hash<std::string>{}(reminder.id());
    }
};
