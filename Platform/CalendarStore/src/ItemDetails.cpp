#include "ItemDetails.h"

#include "ICalComponent.h"
#include "WrittenTime.h"

#include <Foundation/ContentLine.h>

#include <mutex>

namespace platform {
namespace {

bool isWebAddress(std::string_view text) {
    const auto start = asciiLower(text.substr(0, 8));
    return start.starts_with("https://") || start.starts_with("http://");
}

EKEventStatus statusOf(icalcomponent* component) {
    switch (icalcomponent_get_status(component)) {
        case ICAL_STATUS_CONFIRMED:
            return EKEventStatus::confirmed;
        case ICAL_STATUS_TENTATIVE:
            return EKEventStatus::tentative;
        case ICAL_STATUS_CANCELLED:
            return EKEventStatus::canceled;
        default:
            return EKEventStatus::none;
    }
}

/// The address to join by comes before the address to read at.
std::optional<std::string> addressOf(icalcomponent* component) {
    std::optional<std::string> serverAddress;
    for (auto* p = icalcomponent_get_first_property(component, ICAL_ANY_PROPERTY); p;
         p = icalcomponent_get_next_property(component, ICAL_ANY_PROPERTY)) {
        const auto kind = icalproperty_isa(p);
        if (kind == ICAL_CONFERENCE_PROPERTY) {
            if (auto value = rawValue(p); isWebAddress(value)) return value;
        } else if (kind == ICAL_X_PROPERTY && !serverAddress) {
            const auto name = asciiUpper(optionalText(icalproperty_get_x_name(p)).value_or(""));
            const bool holdsAddress =
                name == "X-GOOGLE-CONFERENCE" ||
                (name.starts_with("X-MICROSOFT-") && name.ends_with("URL")) ||
                (name.starts_with("X-MICROSOFT-ONLINEMEETING") && name.ends_with("LINK"));
            if (auto value = rawValue(p); holdsAddress && isWebAddress(value)) serverAddress = value;
        }
    }
    if (serverAddress) return serverAddress;
    auto* url = icalcomponent_get_first_property(component, ICAL_URL_PROPERTY);
    return url ? optionalText(icalproperty_get_url(url)) : std::nullopt;
}

std::optional<double> travelTimeOf(icalcomponent* component) {
    for (auto* p = icalcomponent_get_first_property(component, ICAL_X_PROPERTY); p;
         p = icalcomponent_get_next_property(component, ICAL_X_PROPERTY)) {
        const auto name = optionalText(icalproperty_get_x_name(p)).value_or("");
        if (!equalIgnoringCase(name, "X-APPLE-TRAVEL-DURATION")) continue;
        const auto duration = parseDuration(rawValue(p));
        if (duration && duration->approximateSeconds() >= 0) return duration->approximateSeconds();
    }
    return std::nullopt;
}

}  // namespace

ICalComponentPtr parseComponent(const std::string& text) {
    static std::once_flag once;
    std::call_once(once, [] { icalerror_set_errors_are_fatal(0); });
    return ICalComponentPtr(icalparser_parse_string(text.c_str()));
}

std::optional<std::string> optionalText(const char* text) {
    return text ? std::optional<std::string>(text) : std::nullopt;
}

std::string rawValue(icalproperty* property) {
    char* text = icalproperty_get_value_as_string_r(property);
    std::string result = text ? text : "";
    icalmemory_free_buffer(text);
    return result;
}

ItemDetails ItemDetails::parse(const std::string& text, const std::vector<std::string>& ownAddresses,
                               const TimeZone& zone) {
    ItemDetails details;
    const auto component = parseComponent(text);
    if (!component) return details;
    const auto property = [&](icalproperty_kind kind) {
        return icalcomponent_get_first_property(component.get(), kind);
    };
    if (auto* p = property(ICAL_SUMMARY_PROPERTY)) details.title = optionalText(icalproperty_get_summary(p));
    if (auto* p = property(ICAL_LOCATION_PROPERTY))
        details.location = optionalText(icalproperty_get_location(p));
    if (auto* p = property(ICAL_DESCRIPTION_PROPERTY)) {
        details.notes = optionalText(icalproperty_get_description(p));
    }
    details.url = addressOf(component.get());
    details.status = statusOf(component.get());
    details.travelTime = travelTimeOf(component.get());
    readParticipants(component.get(), ownAddresses, details);
    readAlarms(component.get(), zone, details);
    return details;
}

}  // namespace platform
