#include "Calendars/AccountJson.h"

namespace hbr {

platform::JsonValue accountJson(const platform::AccountReport& report) {
    const auto count = [](std::size_t number) { return static_cast<std::int64_t>(number); };
    auto addresses = platform::JsonValue::array();
    for (const auto& address : report.account.addresses)
        addresses.append(address);
    auto collections = platform::JsonValue::array();
    for (const auto& collection : report.collections) {
        auto object = platform::JsonValue::object();
        object.set("location", collection.location.string());
        if (collection.events) object.set("calendar", collection.events->calendarIdentifier);
        if (collection.reminders) object.set("taskList", collection.reminders->calendarIdentifier);
        object.set("files", count(collection.files)).set("events", count(collection.eventCount));
        object.set("tasks", count(collection.reminderCount));
        collections.append(std::move(object));
    }
    auto object = platform::JsonValue::object();
    object.set("name", report.account.name).set("location", report.account.location.string());
    object.set("addresses", std::move(addresses)).set("isDelegate", report.account.isDelegate);
    object.set("kind", kindName(report.account.kind)).set("readable", report.readable);
    if (!report.problem.empty()) object.set("problem", report.problem);
    object.set("collections", std::move(collections));
    return object;
}

platform::JsonValue contactsJson(const std::vector<platform::ContactSourceReport>& reports) {
    auto array = platform::JsonValue::array();
    for (const auto& report : reports) {
        auto object = platform::JsonValue::object();
        object.set("name", report.source.name).set("location", report.source.location.string());
        object.set("readable", report.readable);
        if (!report.problem.empty()) object.set("problem", report.problem);
        object.set("files", static_cast<std::int64_t>(report.files));
        object.set("contacts", static_cast<std::int64_t>(report.cards));
        array.append(std::move(object));
    }
    return array;
}

std::string_view kindName(platform::Account::Kind kind) {
    switch (kind) {
        case platform::Account::Kind::ordinary:
            return "ordinary";
        case platform::Account::Kind::birthdays:
            return "birthdays";
        case platform::Account::Kind::holidays:
            return "holidays";
    }
    return "";
}

}  // namespace hbr
