#include <DesktopHost/HandledAlerts.h>

#include <System/Files.h>
#include <Values/JsonText.h>
#include <Values/KeyedDecoder.h>

#include <utility>

namespace hbr {

using platform::JsonValue;

namespace {

/// Far more than a day of alerts takes.
constexpr std::uintmax_t largestFile = 16 * 1024 * 1024;

}  // namespace

HandledAlert HandledAlert::of(const AlertInvocation& invocation) {
    return {invocation.event->id, invocation.event->startDate, invocation.date, invocation.isSnooze};
}

JsonValue json(const std::vector<HandledAlert>& alerts) {
    JsonValue list = JsonValue::array();
    for (const HandledAlert& one : alerts) {
        list.append(JsonValue::object()
                        .set("event", one.eventId)
                        .set("start", one.start.timeIntervalSinceReferenceDate())
                        .set("date", one.alert.timeIntervalSinceReferenceDate())
                        .set("snooze", one.isSnooze));
    }
    return list;
}

std::vector<HandledAlert> handledAlerts(const JsonValue* list) {
    std::vector<HandledAlert> alerts;
    if (!list || !list->asArray()) return alerts;
    for (const JsonValue& one : *list->asArray()) {
        try {
            const platform::KeyedDecoder decoder(one);
            alerts.push_back({decoder.string("event"), platform::Date(decoder.number("start")),
                              platform::Date(decoder.number("date")), decoder.boolean("snooze")});
        } catch (const platform::DecodingError&) {
            continue;
        }
    }
    return alerts;
}

HandledAlertsFile::HandledAlertsFile(platform::EnvironmentRef environment)
    : environment_(std::move(environment)), path_(environment_->dataDirectory / "alerts.json") {}

std::vector<HandledAlert> HandledAlertsFile::load() const {
    std::error_code error;
    const auto text = platform::readRegularFile(path_, error, largestFile);
    const auto list = text ? platform::parseJson(*text) : std::nullopt;
    return handledAlerts(list ? &*list : nullptr);
}

void HandledAlertsFile::save(const std::vector<HandledAlert>& alerts) const {
    std::error_code error;
    if (platform::createDirectories(path_.parent_path(), 0700, error) &&
        platform::writeFileAtomically(path_, platform::writeJson(json(alerts)) + "\n", 0600, error))
        return;
    environment_->diagnostics->report({.file = path_,
                                       .text = "cannot be written, so an alert may be shown again after a "
                                               "restart: " +
                                               error.message()});
}

}  // namespace hbr
