#pragma once

#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <HbrCore/Events/DemoEvents.h>
#include <HbrCore/Scheduling/CalendarEventManager.h>
#include <HbrCore/Scheduling/ReloadSettings.h>
#include <HbrCore/Stores/AggregatedEventStore.h>
#include <HbrCore/Stores/ContactsStore.h>
#include <HbrCore/Stores/CustomRemindersStore.h>
#include <HbrCore/Stores/EventSettingsStore.h>
#include <HbrCore/Stores/HiddenOccurrencesStore.h>
#include <HbrCore/Stores/UserSettingsStore.h>
#include <HbrUtils/DefaultsDomains.h>
#include <HbrUtils/Formatters.h>
#include <System/Environment.h>
#include <System/NotificationCenter.h>

#include <memory>

namespace hbr {

/// The core of one process, wired: settings domains, stores, link parser, formatters and manager over one
/// environment. Made and destroyed on the main thread.
class CoreServices {
  public:
    struct Options {
        /// Starts the minute timer and watches the sources.
        bool isLongLived = false;
        /// Asks for calendar and reminder access at once, so that delegated accounts are included.
        bool asksForAccess = false;
    };

    CoreServices(platform::EnvironmentRef environment, Options options);
    ~CoreServices();
    CoreServices(const CoreServices&) = delete;
    CoreServices& operator=(const CoreServices&) = delete;

    /// Of Environment::current(), one-shot unless `configureShared` said otherwise; never destroyed.
    static CoreServices& shared();
    /// Before the first use of `shared`.
    static void configureShared(Options options);

    const platform::EnvironmentRef& environment() const;
    platform::NotificationCenter& center() const;
    const DefaultsDomains& domains() const;
    const platform::DefaultsDomainRef& standardDomain() const { return domains().standard; }
    const platform::DefaultsDomainRef& sharedDomain() const { return domains().shared; }
    const Formatters& formatters() const;
    const VideoConferenceLinkParser& parser() const;
    const DemoEvents& demoEvents() const;
    UserSettingsStore& settings() const;
    EventSettingsStore& eventSettings() const;
    HiddenOccurrencesStore hiddenOccurrences() const { return HiddenOccurrencesStore(sharedDomain()); }
    CustomRemindersStore& reminders() const;
    AggregatedEventStore& aggregatedEventStore() const;
    CalendarEventManager& manager() const;
    /// Made, and the contacts' folders looked at, with the first use. Safe from any thread.
    ContactsStore& contacts() const;
    /// What `contacts` looks things up in.
    platform::CNContactStore& contactCards() const;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

/// Main thread only: reloads after any program wrote a setting, an own reminder or what was chosen for an
/// event, once for writes that come together. Ends when the result is destroyed.
[[nodiscard]] std::shared_ptr<void> reloadAfterSettingsChange(CoreServices& services);

/// Main thread only: reloads without announcing it and runs the main queue until the lists are in place.
void reloadAndWait(CoreServices& services);
/// The same with these settings in place of the stored ones.
void reloadAndWait(CoreServices& services, const ReloadSettings& settings);

}  // namespace hbr
