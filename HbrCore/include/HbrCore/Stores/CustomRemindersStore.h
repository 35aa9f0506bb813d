#pragma once

#include <HbrCore/Events/Reminder.h>
#include <HbrCore/Stores/SettingsTable.h>
#include <System/DefaultsDomain.h>
#include <System/Environment.h>
#include <System/NotificationCenter.h>

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace hbr {

inline constexpr std::string_view remindersChangedNotification = "RemindersChanged";

/// Keeps own reminders in the order in which they were added.
class CustomRemindersStoring {
  public:
    virtual ~CustomRemindersStoring() = default;
    virtual std::vector<Reminder> reminders() const = 0;
    /// Later than now.
    virtual std::vector<Reminder> futureReminders() const = 0;
    virtual bool addReminder(const Reminder& reminder) = 0;
    /// Takes the place of every reminder with its id, at the end.
    virtual bool updateReminder(const Reminder& reminder) = 0;
    virtual bool removeReminder(std::string_view id) = 0;
    /// Updates the first reminder with that id to be this many seconds later, whoever else changes it
    /// meanwhile. False when there is none or it could not be stored.
    virtual bool moveReminder(std::string_view id, double seconds) = 0;
    /// Drops what lies more than 30 calendar days back, without an announcement.
    virtual bool purgePastReminders() = 0;
    virtual std::optional<Reminder> reminder(std::string_view forID) const = 0;
    /// Both bounds included.
    virtual std::vector<Reminder> reminders(platform::Date from, platform::Date to) const = 0;
};

/// Own reminders in the shared domain under "customReminders". Every read sees the newest write of any
/// process; a block that cannot be read is an empty list. Writes but the purge post "RemindersChanged"
/// on the calling thread and are false when the file could not be written. Safe from any thread; writers
/// never lose each other's change.
class CustomRemindersStore final : public CustomRemindersStoring {
  public:
    static constexpr std::string_view storageKey = SettingsTable::customReminders;

    CustomRemindersStore(platform::DefaultsDomainRef defaults, platform::NotificationCenter& center,
                         platform::EnvironmentRef environment);
    ~CustomRemindersStore() override;
    /// Of CoreServices::shared().
    static CustomRemindersStore& shared();

    std::vector<Reminder> reminders() const override;
    std::vector<Reminder> futureReminders() const override;
    bool addReminder(const Reminder& reminder) override;
    bool updateReminder(const Reminder& reminder) override;
    bool removeReminder(std::string_view id) override;
    bool moveReminder(std::string_view id, double seconds) override;
    bool purgePastReminders() override;
    std::optional<Reminder> reminder(std::string_view forID) const override;
    std::vector<Reminder> reminders(platform::Date from, platform::Date to) const override;

  private:
    struct Decoded;
    std::shared_ptr<const std::vector<Reminder>> stored() const;
    bool change(const std::function<void(std::vector<Reminder>&)>& change);

    platform::DefaultsDomainRef defaults_;
    platform::NotificationCenter& center_;
    platform::EnvironmentRef environment_;
    std::unique_ptr<Decoded> decoded_;
};

}  // namespace hbr
