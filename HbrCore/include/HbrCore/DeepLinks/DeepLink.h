#pragma once

#include <TimeAndText/Url.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace hbr {

inline constexpr std::string_view deepLinkScheme = "heedbanner";

enum class DeepLinkDestination { preview, viewInCalendar, joinCall };

std::string_view rawValue(DeepLinkDestination destination);
/// Only for exactly one of the three texts.
std::optional<DeepLinkDestination> deepLinkDestination(std::string_view rawValue);

/// One action on one event, written as heedbanner://DESTINATION/ID.
class DeepLink {
  public:
    virtual ~DeepLink() = default;
    virtual DeepLinkDestination destination() const = 0;
    virtual platform::Url url() const = 0;
    /// The `eventID` of every kind.
    virtual const std::string& eventIdentifier() const = 0;
};

/// The three kinds differ in their destination alone.
template <DeepLinkDestination fixedDestination>
class EventDeepLink final : public DeepLink {
  public:
    explicit EventDeepLink(std::string id) : eventID(std::move(id)) {}
    DeepLinkDestination destination() const override { return fixedDestination; }
    platform::Url url() const override;
    const std::string& eventIdentifier() const override { return eventID; }

    std::string eventID;

    friend bool operator==(const EventDeepLink& a, const EventDeepLink& b) { return a.eventID == b.eventID; }
};

using PreviewEventDeepLink = EventDeepLink<DeepLinkDestination::preview>;
using ViewEventInCalendarDeepLink = EventDeepLink<DeepLinkDestination::viewInCalendar>;
using JoinCallDeepLink = EventDeepLink<DeepLinkDestination::joinCall>;

class DeepLinkBuilder {
  public:
    /// nullptr for every URL that is not a deep link.
    std::unique_ptr<DeepLink> make(const platform::Url& url) const;
};

}  // namespace hbr
