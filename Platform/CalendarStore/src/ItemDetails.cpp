#include "ItemDetails.h"

#include "ItemAlarms.h"
#include "ItemLines.h"
#include "ItemParticipants.h"
#include "WrittenTime.h"

namespace platform {
namespace {

using Lines = std::vector<ContentLine>;

std::optional<std::string> textOf(const Lines& lines, std::string_view name) {
    const auto* line = firstNamed(lines, name);
    return line ? std::optional(unescapedText(line->value)) : std::nullopt;
}

bool isWebAddress(std::string_view text) {
    const auto start = asciiLower(text.substr(0, 8));
    return start.starts_with("https://") || start.starts_with("http://");
}

EKEventStatus statusOf(const Lines& lines) {
    const auto* line = firstNamed(lines, "STATUS");
    const auto status = line ? asciiUpper(line->value) : "";
    if (status == "CONFIRMED") return EKEventStatus::confirmed;
    if (status == "TENTATIVE") return EKEventStatus::tentative;
    if (status == "CANCELLED") return EKEventStatus::canceled;
    return EKEventStatus::none;
}

/// Properties in which calendar servers write the address of a call.
bool holdsServerAddress(const ContentLine& line) {
    const auto name = asciiUpper(line.name);
    return name == "X-GOOGLE-CONFERENCE" || (name.starts_with("X-MICROSOFT-") && name.ends_with("URL")) ||
           (name.starts_with("X-MICROSOFT-ONLINEMEETING") && name.ends_with("LINK"));
}

/// The address to join by comes before the address to read at.
std::optional<std::string> addressOf(const Lines& lines) {
    std::optional<std::string> serverAddress;
    for (const auto& line : lines) {
        if (line.is("CONFERENCE")) {
            if (isWebAddress(line.value)) return std::string(line.value);
        } else if (!serverAddress && holdsServerAddress(line)) {
            auto value = unescapedText(line.value);
            if (isWebAddress(value)) serverAddress = std::move(value);
        }
    }
    if (serverAddress) return serverAddress;
    const auto* url = firstNamed(lines, "URL");
    return url ? std::optional<std::string>(url->value) : std::nullopt;
}

std::optional<double> travelTimeOf(const Lines& lines) {
    for (const auto& line : lines) {
        if (!line.is("X-APPLE-TRAVEL-DURATION")) continue;
        const auto duration = parseDuration(line.value);
        if (duration && duration->approximateSeconds() >= 0) return duration->approximateSeconds();
    }
    return std::nullopt;
}

}  // namespace

ItemDetails ItemDetails::parse(std::string_view text, const std::vector<std::string>& ownAddresses,
                               const TimeZone& zone) {
    const ItemLines lines(text);
    ItemDetails details;
    details.title = textOf(lines.own, "SUMMARY");
    details.location = textOf(lines.own, "LOCATION");
    details.notes = textOf(lines.own, "DESCRIPTION");
    details.url = addressOf(lines.own);
    details.status = statusOf(lines.own);
    details.travelTime = travelTimeOf(lines.own);
    readParticipants(lines.own, ownAddresses, details);
    for (const auto& alarm : lines.alarms) {
        auto read = alarmOf(alarm, zone);
        if (!read) continue;
        if (!details.alarms) details.alarms.emplace();
        details.alarms->push_back(std::move(*read));
    }
    return details;
}

}  // namespace platform
