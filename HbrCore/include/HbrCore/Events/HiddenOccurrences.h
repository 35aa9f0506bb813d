#pragma once

#include <CalendarStore/EKCalendarItem.h>
#include <TimeAndText/Date.h>

#include <compare>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace hbr {

/// One occurrence of a series. It stays the same one when it is moved.
struct Occurrence {
    /// That of the series.
    std::string eventIdentifier;
    /// The start that the series gives it.
    platform::Date originalStart;

    /// Nothing for an event that does not recur.
    static std::optional<Occurrence> of(const platform::EKEvent& event);
    /// From "IDENTIFIER START", the start as RFC 3339; nothing for another text.
    static std::optional<Occurrence> parse(std::string_view text);
    std::string text() const;

    friend bool operator==(const Occurrence&, const Occurrence&) = default;
    friend auto operator<=>(const Occurrence&, const Occurrence&) = default;
};

/// The occurrences that the user left out one by one. A value that is cheap to copy.
class HiddenOccurrences {
  public:
    HiddenOccurrences() = default;
    explicit HiddenOccurrences(std::set<Occurrence> occurrences);

    bool contains(const platform::EKEvent& event) const;
    /// By series, then by start.
    const std::set<Occurrence>& all() const;

  private:
    /// Absent without any.
    std::shared_ptr<const std::set<Occurrence>> occurrences_;
};

}  // namespace hbr
