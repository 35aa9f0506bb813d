#include <HbrCore/CoreServices.h>

#include <Accounts/AccountSources.h>
#include <HbrCore/Stores/SettingsMigration.h>
#include <System/MainQueue.h>

#include <mutex>
#include <utility>

namespace hbr {

namespace {

/// The accounts that hold contacts.
platform::ContactSources contactSources(const platform::EnvironmentRef& environment) {
    const platform::AccountsFile accounts(environment);
    return {.load =
                [accounts] {
                    std::vector<platform::ContactSource> sources;
                    for (auto& account : accounts.load()) {
                        if (account.contents != platform::Account::Contents::contacts) continue;
                        sources.push_back({std::move(account.name), std::move(account.location)});
                    }
                    return sources;
                },
            .definedIn = accounts.path()};
}

}  // namespace

struct CoreServices::Parts {
    platform::EnvironmentRef environment;
    platform::NotificationCenter& center;
    DefaultsDomains domains;
    std::shared_ptr<const Formatters> formatters;
    std::shared_ptr<const VideoConferenceLinkParser> parser;
    std::shared_ptr<const DemoEvents> demoEvents;
    std::shared_ptr<UserSettingsStore> settings;
    std::shared_ptr<EventSettingsStore> eventSettings;
    std::shared_ptr<CustomRemindersStore> reminders;
    std::shared_ptr<AggregatedEventStore> aggregatedEventStore;
    std::unique_ptr<CalendarEventManager> manager;
    bool isLongLived = false;
    std::once_flag contactsOnce;
    std::shared_ptr<platform::CNContactStore> contactCards;
    std::unique_ptr<ContactsStore> contacts;

    explicit Parts(platform::EnvironmentRef world)
        : environment(std::move(world)),
          center(platform::NotificationCenter::shared()),
          domains(DefaultsDomains::of(*environment)) {}

    void makeContacts() {
        contactCards = std::make_shared<platform::CNContactStore>(environment, contactSources(environment));
        contacts = std::make_unique<ContactsStore>(contactCards, environment);
        if (isLongLived) contactCards->startWatching();
    }
};

CoreServices::CoreServices(platform::EnvironmentRef environment, Options options)
    : parts_(std::make_unique<Parts>(std::move(environment))) {
    Parts& parts = *parts_;
    parts.isLongLived = options.isLongLived;
    markMigratedWithoutOldSettings(parts.domains);
    parts.formatters = std::make_shared<const Formatters>(parts.environment);
    parts.parser = std::make_shared<const VideoConferenceLinkParser>(parts.environment);
    parts.demoEvents = std::make_shared<const DemoEvents>(parts.environment);
    parts.settings = std::make_shared<UserSettingsStore>(parts.domains, parts.environment->diagnostics);
    parts.eventSettings = std::make_shared<EventSettingsStore>(parts.domains.shared, parts.center);
    parts.reminders =
        std::make_shared<CustomRemindersStore>(parts.domains.shared, parts.center, parts.environment);
    parts.aggregatedEventStore = std::make_shared<AggregatedEventStore>(AggregatedEventStore::Collaborators{
        .environment = parts.environment,
        .center = parts.center,
        .sources = std::make_shared<platform::AccountSources>(parts.environment),
        .settings = parts.settings,
        .eventSettings = parts.eventSettings,
        .parser = parts.parser});
    if (options.asksForAccess) {
        // Without access there is nothing to show; the lists are then empty and `doctor` says why.
        parts.aggregatedEventStore->requestCalendarAccess([](std::exception_ptr) {});
        parts.aggregatedEventStore->requestReminderAccess([](std::exception_ptr) {});
    }
    parts.manager = std::make_unique<CalendarEventManager>(
        CalendarEventManager::Collaborators{.environment = parts.environment,
                                            .center = parts.center,
                                            .settings = parts.settings,
                                            .eventSettings = parts.eventSettings,
                                            .reminders = parts.reminders,
                                            .aggregatedEventStore = parts.aggregatedEventStore,
                                            .parser = parts.parser,
                                            .demoEvents = parts.demoEvents},
        options.isLongLived ? CalendarEventManager::Lifetime::longLived
                            : CalendarEventManager::Lifetime::oneShot);
}

CoreServices::~CoreServices() = default;

namespace {
CoreServices::Options& sharedOptions() {
    static CoreServices::Options options;
    return options;
}
}  // namespace

void CoreServices::configureShared(Options options) {
    sharedOptions() = options;
}

CoreServices& CoreServices::shared() {
    // Never destroyed: work on the main queue may use it until the process ends.
    static CoreServices* services = new CoreServices(platform::Environment::current(), sharedOptions());
    return *services;
}

const platform::EnvironmentRef& CoreServices::environment() const {
    return parts_->environment;
}
platform::NotificationCenter& CoreServices::center() const {
    return parts_->center;
}
const DefaultsDomains& CoreServices::domains() const {
    return parts_->domains;
}
const Formatters& CoreServices::formatters() const {
    return *parts_->formatters;
}
const VideoConferenceLinkParser& CoreServices::parser() const {
    return *parts_->parser;
}
const DemoEvents& CoreServices::demoEvents() const {
    return *parts_->demoEvents;
}
UserSettingsStore& CoreServices::settings() const {
    return *parts_->settings;
}
EventSettingsStore& CoreServices::eventSettings() const {
    return *parts_->eventSettings;
}
CustomRemindersStore& CoreServices::reminders() const {
    return *parts_->reminders;
}
AggregatedEventStore& CoreServices::aggregatedEventStore() const {
    return *parts_->aggregatedEventStore;
}
CalendarEventManager& CoreServices::manager() const {
    return *parts_->manager;
}
ContactsStore& CoreServices::contacts() const {
    std::call_once(parts_->contactsOnce, [this] { parts_->makeContacts(); });
    return *parts_->contacts;
}
platform::CNContactStore& CoreServices::contactCards() const {
    contacts();
    return *parts_->contactCards;
}

UserSettingsStore& UserSettingsStore::shared() {
    return CoreServices::shared().settings();
}
EventSettingsStore& EventSettingsStore::shared() {
    return CoreServices::shared().eventSettings();
}
CustomRemindersStore& CustomRemindersStore::shared() {
    return CoreServices::shared().reminders();
}
AggregatedEventStore& AggregatedEventStore::shared() {
    return CoreServices::shared().aggregatedEventStore();
}
ContactsStore& ContactsStore::shared() {
    return CoreServices::shared().contacts();
}
CalendarEventManager& CalendarEventManager::shared() {
    return CoreServices::shared().manager();
}

std::shared_ptr<void> reloadAfterSettingsChange(CoreServices& services) {
    std::vector<std::string> keys(SettingsTable::records.begin(), SettingsTable::records.end());
    // What the standard domain holds matters to no reload.
    for (const SettingFacts& setting : SettingsTable::facts) {
        if (setting.isShared) keys.emplace_back(setting.key);
    }
    return services.sharedDomain()->observe(std::move(keys),
                                            [&services] { services.manager().reloadChangedSettings(); });
}

void reloadAndWait(CoreServices& services) {
    bool isDone = false;
    services.manager().reloadEvents(false, [&isDone] { isDone = true; });
    platform::MainQueue::shared().runUntil([&isDone] { return isDone; });
}

void reloadAndWait(CoreServices& services, const ReloadSettings& settings) {
    bool isDone = false;
    services.manager().reloadEvents(settings, [&isDone] { isDone = true; });
    platform::MainQueue::shared().runUntil([&isDone] { return isDone; });
}

}  // namespace hbr
