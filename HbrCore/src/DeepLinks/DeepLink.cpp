#include <HbrCore/DeepLinks/DeepLink.h>

#include <TimeAndText/Text.h>

#include <array>
#include <utility>

namespace hbr {

namespace {
constexpr std::array destinations = {DeepLinkDestination::preview, DeepLinkDestination::viewInCalendar,
                                     DeepLinkDestination::joinCall};
}

std::string_view rawValue(DeepLinkDestination destination) {
    switch (destination) {
        case DeepLinkDestination::preview:
            return "preview";
        case DeepLinkDestination::viewInCalendar:
            return "viewInCalendar";
        case DeepLinkDestination::joinCall:
            return "joinCall";
    }
    return {};
}

std::optional<DeepLinkDestination> deepLinkDestination(std::string_view text) {
    for (auto destination : destinations) {
        if (rawValue(destination) == text) return destination;
    }
    return std::nullopt;
}

template <DeepLinkDestination fixedDestination>
platform::Url EventDeepLink<fixedDestination>::url() const {
    const std::string base = std::string(deepLinkScheme) + "://" + std::string(rawValue(fixedDestination));
    return platform::Url::parse(base).value().appendingPathComponent(eventID);
}

template class EventDeepLink<DeepLinkDestination::preview>;
template class EventDeepLink<DeepLinkDestination::viewInCalendar>;
template class EventDeepLink<DeepLinkDestination::joinCall>;

std::unique_ptr<DeepLink> DeepLinkBuilder::make(const platform::Url& url) const {
    if (url.scheme() != deepLinkScheme) return nullptr;
    const auto host = url.host();
    const auto destination = host ? deepLinkDestination(*host) : std::nullopt;
    if (!destination) return nullptr;
    auto pieces = platform::split(url.path(), "/", false);
    if (pieces.empty()) return nullptr;
    std::string& id = pieces.front();
    switch (*destination) {
        case DeepLinkDestination::preview:
            return std::make_unique<PreviewEventDeepLink>(std::move(id));
        case DeepLinkDestination::viewInCalendar:
            return std::make_unique<ViewEventInCalendarDeepLink>(std::move(id));
        case DeepLinkDestination::joinCall:
            return std::make_unique<JoinCallDeepLink>(std::move(id));
    }
    return nullptr;
}

}  // namespace hbr
