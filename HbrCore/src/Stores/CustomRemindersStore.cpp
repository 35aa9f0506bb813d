#include <HbrCore/Stores/CustomRemindersStore.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <iterator>
#include <mutex>
#include <utility>

namespace hbr {

using platform::PropertyValue;

namespace {

constexpr int keptDays = 30;

std::vector<Reminder> decoded(const std::optional<PropertyValue>& stored) {
    const platform::Data* data = stored ? stored->asData() : nullptr;
    if (!data) return {};
    try {
        return decodeJsonData<std::vector<Reminder>>(*data);
    } catch (const platform::DecodingError&) {
        return {};
    }
}

/// JSON has no word for another date: it would make the whole list unreadable.
bool canBeStored(const Reminder& reminder) {
    return std::isfinite(reminder.date().timeIntervalSinceReferenceDate());
}

void removeById(std::vector<Reminder>& reminders, std::string_view id) {
    std::erase_if(reminders, [&](const Reminder& reminder) { return reminder.id() == id; });
}

}  // namespace

/// The last block read with its reminders: a reload asks several times a minute, and decoding costs more
/// than comparing.
struct CustomRemindersStore::Decoded {
    std::mutex mutex;
    std::optional<PropertyValue> block;
    std::shared_ptr<const std::vector<Reminder>> list = std::make_shared<const std::vector<Reminder>>();
};

CustomRemindersStore::CustomRemindersStore(platform::DefaultsDomainRef defaults,
                                           platform::NotificationCenter& center,
                                           platform::EnvironmentRef environment)
    : defaults_(std::move(defaults)),
      center_(center),
      environment_(std::move(environment)),
      decoded_(std::make_unique<Decoded>()) {}

CustomRemindersStore::~CustomRemindersStore() = default;

std::shared_ptr<const std::vector<Reminder>> CustomRemindersStore::stored() const {
    auto block = defaults_->value(storageKey);
    std::lock_guard lock(decoded_->mutex);
    if (block != decoded_->block) {
        decoded_->list = std::make_shared<const std::vector<Reminder>>(decoded(block));
        decoded_->block = std::move(block);
    }
    return decoded_->list;
}

bool CustomRemindersStore::change(const std::function<void(std::vector<Reminder>&)>& change) {
    const bool isStored =
        defaults_->update(storageKey, [change](const std::optional<PropertyValue>& current) {
            auto list = decoded(current);
            change(list);
            return std::optional<PropertyValue>(encodeJsonData(list));
        });
    center_.post(remindersChangedNotification);
    return isStored;
}

std::vector<Reminder> CustomRemindersStore::reminders() const {
    return *stored();
}

std::vector<Reminder> CustomRemindersStore::futureReminders() const {
    auto list = reminders();
    std::erase_if(list, [&](const Reminder& reminder) { return reminder.date() <= environment_->now(); });
    return list;
}

bool CustomRemindersStore::addReminder(const Reminder& reminder) {
    if (!canBeStored(reminder)) return false;
    return change([reminder](std::vector<Reminder>& list) { list.push_back(reminder); });
}

bool CustomRemindersStore::updateReminder(const Reminder& reminder) {
    if (!canBeStored(reminder)) return false;
    return change([reminder](std::vector<Reminder>& list) {
        removeById(list, reminder.id());
        list.push_back(reminder);
    });
}

bool CustomRemindersStore::removeReminder(std::string_view id) {
    return change([id = std::string(id)](std::vector<Reminder>& list) { removeById(list, id); });
}

bool CustomRemindersStore::moveReminder(std::string_view id, double seconds) {
    const auto isFound = std::make_shared<std::atomic<bool>>(false);
    const bool isStored = defaults_->update(
        storageKey, [id = std::string(id), seconds, isFound](const std::optional<PropertyValue>& current) {
            auto list = decoded(current);
            const auto found = std::ranges::find(list, id, &Reminder::id);
            if (found == list.end()) return current;
            Reminder moved = found->addingTimeInterval(seconds);
            if (!canBeStored(moved)) return current;
            *isFound = true;
            removeById(list, id);
            list.push_back(std::move(moved));
            return std::optional<PropertyValue>(encodeJsonData(list));
        });
    if (*isFound) center_.post(remindersChangedNotification);
    return *isFound && isStored;
}

bool CustomRemindersStore::purgePastReminders() {
    const platform::Date cutoff = environment_->calendar.addingDays(environment_->now(), -keptDays);
    auto isPast = [cutoff](const Reminder& reminder) { return reminder.date() < cutoff; };
    // A reload comes here every minute; it takes the lock only when there is something to drop.
    if (std::ranges::none_of(*stored(), isPast)) return true;
    return defaults_->update(storageKey, [isPast](const std::optional<PropertyValue>& current) {
        auto list = decoded(current);
        if (std::erase_if(list, isPast) == 0) return current;
        return std::optional<PropertyValue>(encodeJsonData(list));
    });
}

std::optional<Reminder> CustomRemindersStore::reminder(std::string_view forID) const {
    const auto list = stored();
    const auto found = std::ranges::find(*list, forID, &Reminder::id);
    return found == list->end() ? std::nullopt : std::optional(*found);
}

std::vector<Reminder> CustomRemindersStore::reminders(platform::Date from, platform::Date to) const {
    std::vector<Reminder> inside;
    std::ranges::copy_if(*stored(), std::back_inserter(inside), [&](const Reminder& reminder) {
        return from <= reminder.date() && reminder.date() <= to;
    });
    return inside;
}

}  // namespace hbr
