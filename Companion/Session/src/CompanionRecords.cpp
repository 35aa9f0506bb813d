#include <Session/CompanionRecords.h>

#include <algorithm>

namespace hbr {

namespace {

constexpr std::string_view decidedKey = "decidedIdentifiers";
constexpr std::string_view lastSetupKey = "lastSetup";

platform::PropertyValue listOf(const std::vector<std::string>& texts) {
    return platform::PropertyArray(texts.begin(), texts.end());
}

std::vector<std::string> stringsOf(const platform::PropertyValue* value) {
    if (!value) return {};
    return value->asStrings().value_or(std::vector<std::string>{});
}

bool contains(const std::vector<std::string>& list, const std::string& text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

}  // namespace

CompanionRecords::CompanionRecords(const platform::Environment& environment)
    : domain_(environment.dataDirectory / "companion.plist", environment.diagnostics) {}

std::vector<std::string> CompanionRecords::decidedIdentifiers() const {
    const auto value = domain_.value(decidedKey);
    return stringsOf(value ? &*value : nullptr);
}

void CompanionRecords::addDecided(const std::vector<std::string>& identifiers) {
    domain_.update(decidedKey, [&](const std::optional<platform::PropertyValue>& stored) {
        auto list = stringsOf(stored ? &*stored : nullptr);
        for (const auto& identifier : identifiers) {
            if (!contains(list, identifier)) list.push_back(identifier);
        }
        return std::optional(listOf(list));
    });
}

void CompanionRecords::removeDecided(const std::vector<std::string>& identifiers) {
    domain_.update(decidedKey, [&](const std::optional<platform::PropertyValue>& stored) {
        auto list = stringsOf(stored ? &*stored : nullptr);
        std::erase_if(list, [&](const std::string& one) { return contains(identifiers, one); });
        return std::optional(listOf(list));
    });
}

SetupRecord CompanionRecords::lastSetup() const {
    const auto value = domain_.value(lastSetupKey);
    const auto* record = value ? value->asDictionary() : nullptr;
    if (!record) return {};
    SetupRecord setup{stringsOf(record->find("accounts")),
                      stringsOf(record->find("calendars")),
                      stringsOf(record->find("reminderLists")),
                      {}};
    const auto* addresses = record->find("addresses");
    if (const auto* byAccount = addresses ? addresses->asDictionary() : nullptr) {
        for (const auto& [account, list] : *byAccount)
            setup.addresses[account] = stringsOf(&list);
    }
    return setup;
}

void CompanionRecords::setLastSetup(const SetupRecord& record) {
    if (record.empty()) {
        domain_.removeValue(lastSetupKey);
        return;
    }
    platform::PropertyDictionary stored;
    stored.set("accounts", listOf(record.accounts));
    stored.set("calendars", listOf(record.calendars));
    stored.set("reminderLists", listOf(record.reminderLists));
    platform::PropertyDictionary addresses;
    for (const auto& [account, list] : record.addresses)
        addresses.set(account, listOf(list));
    if (!record.addresses.empty()) stored.set("addresses", std::move(addresses));
    domain_.setValue(lastSetupKey, std::move(stored));
}

}  // namespace hbr
