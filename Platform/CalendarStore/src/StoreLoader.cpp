#include "StoreLoader.h"

#include "CollectionNaming.h"

#include "CalendarPalette.h"
#include "Identifiers.h"

#include <algorithm>

namespace platform {
namespace {

std::shared_ptr<const EKSource> sourceOf(const Account& account) {
    EKSource source{account.name, account.isDelegate, {}};
    for (const auto& address : account.addresses)
        source.ownerAddresses.push_back("mailto:" + address);
    return std::make_shared<const EKSource>(std::move(source));
}

bool sameCalendar(const EKCalendarRef& a, const EKCalendarRef& b) {
    if (!a || !b) return !a && !b;
    return a->calendarIdentifier == b->calendarIdentifier && a->title == b->title && a->color == b->color &&
           a->type == b->type && a->entityType == b->entityType &&
           a->isSubscribedHolidayCalendar == b->isSubscribedHolidayCalendar && *a->source == *b->source;
}

}  // namespace

bool StoreSnapshot::anyReadable() const {
    return std::any_of(accounts.begin(), accounts.end(), [](const auto& a) { return a.readable(); }) ||
           std::any_of(others.begin(), others.end(), [](const auto& a) { return a.readable(); });
}

bool StoreSnapshot::shows(const StoreSnapshot& other) const {
    const auto sameCollection = [](const Collection& a, const Collection& b) {
        return sameCalendar(a.events, b.events) && sameCalendar(a.reminders, b.reminders) &&
               a.files == b.files;
    };
    const auto sameOther = [](const KnownAccount& a, const KnownAccount& b) {
        return a.account == b.account && a.readable() == b.readable();
    };
    const auto sameAccount = [&](const SnapshotAccount& a, const SnapshotAccount& b) {
        return sameOther(a, b) && std::equal(a.collections.begin(), a.collections.end(),
                                             b.collections.begin(), b.collections.end(), sameCollection);
    };
    return std::equal(accounts.begin(), accounts.end(), other.accounts.begin(), other.accounts.end(),
                      sameAccount) &&
           std::equal(others.begin(), others.end(), other.others.begin(), other.others.end(), sameOther);
}

StoreLoader::StoreLoader(EnvironmentRef environment, CalendarSourcesRef sources,
                         std::optional<std::vector<std::shared_ptr<const EKSource>>> delegates)
    : environment_(std::move(environment)),
      sources_(std::move(sources)),
      delegates_(std::move(delegates)),
      files_(environment_->diagnostics,
             [this](const auto& file, std::string bytes, DiagnosticsSink& diagnostics) {
                 return scanItems(file, std::move(bytes), diagnostics, zones_);
             }) {}

bool StoreLoader::isMine(const Account& account) const {
    if (!delegates_) return !account.isDelegate;
    const auto source = sourceOf(account);
    return std::any_of(delegates_->begin(), delegates_->end(),
                       [&](const auto& wanted) { return wanted && *wanted == *source; });
}

std::shared_ptr<const StoreSnapshot> StoreLoader::load(const StoreSnapshot* previous) {
    auto snapshot = std::make_shared<StoreSnapshot>();
    std::set<std::string> identifiers;
    snapshot->listed = sources_->accounts();
    for (const auto& account : snapshot->listed) {
        if (account.contents != Account::Contents::calendars) continue;
        if (isMine(account)) {
            snapshot->accounts.push_back(loadAccount(account, previous, identifiers));
        } else if (!delegates_) {
            snapshot->others.push_back({account, sources_->problem(account)});
        }
    }
    files_.forgetUnused();
    zones_.forgetUnused();
    for (const auto& account : snapshot->accounts) {
        for (const auto& collection : account.collections) {
            for (const auto& calendar : {collection.events, collection.reminders}) {
                if (calendar) snapshot->byCalendar.emplace(calendar->calendarIdentifier, &collection);
            }
        }
    }
    return snapshot;
}

SnapshotAccount StoreLoader::loadAccount(const Account& account, const StoreSnapshot* previous,
                                         std::set<std::string>& identifiers) {
    auto contents = sources_->load(account);
    SnapshotAccount loaded{
        {account, std::move(contents.problem)}, sourceOf(account), {}, std::move(contents.watched)};
    std::set<std::string> colors;
    for (const auto& collection : contents.collections)
        loaded.collections.push_back(loadCollection(loaded, collection, previous, identifiers, colors));
    return loaded;
}

Collection StoreLoader::loadCollection(const SnapshotAccount& account, const CalendarCollection& found,
                                       const StoreSnapshot* previous, std::set<std::string>& identifiers,
                                       std::set<std::string>& colors) {
    Collection collection;
    collection.location = found.location;
    bool hasEvents = false;
    bool hasTasks = false;
    auto files = files_.readAll(found.texts, [&](const CalendarText& text, DiagnosticsSink& diagnostics) {
        return sources_->read(text, diagnostics);
    });
    for (auto& file : files) {
        if (!file) continue;
        for (const auto& item : file->items) {
            (item.kind == ScannedItem::Kind::event ? hasEvents : hasTasks) = true;
        }
        collection.files.push_back(std::move(file));
    }
    const auto& settings = account.account;
    auto identifier = calendarIdentifier(settings.name, found.path);
    for (int n = 2; !identifiers.insert(identifier).second; ++n) {
        identifier = calendarIdentifier(settings.name, found.path) + "-" + std::to_string(n);
    }
    const auto naming = namingOf(found, collection.files);
    EKCalendar calendar;
    calendar.calendarIdentifier = identifier;
    calendar.title = naming.title.value_or(settings.name);
    calendar.color = naming.color ? *naming.color : paletteColor(identifier, colors);
    if (naming.color) colors.insert(naming.color->hexString());
    if (settings.kind == Account::Kind::birthdays) calendar.type = EKCalendarType::birthday;
    if (settings.kind == Account::Kind::holidays) {
        calendar.type = EKCalendarType::subscription;
        calendar.isSubscribedHolidayCalendar = true;
    }
    calendar.source = account.source;
    if (hasEvents || !hasTasks) collection.events = std::make_shared<const EKCalendar>(calendar);
    if (hasTasks) {
        calendar.entityType = EKEntityType::reminder;
        calendar.calendarIdentifier = identifier + "-tasks";
        collection.reminders = std::make_shared<const EKCalendar>(calendar);
    }

    const auto keyCalendar = collection.events ? collection.events : collection.reminders;
    const CollectionIndex* former = nullptr;
    if (previous) {
        const auto known = previous->byCalendar.find(keyCalendar->calendarIdentifier);
        if (known != previous->byCalendar.end()) {
            const auto& before = *known->second;
            // The records of items that did not change keep their calendar, and so stay the same.
            if (sameCalendar(before.events, collection.events)) collection.events = before.events;
            if (sameCalendar(before.reminders, collection.reminders)) collection.reminders = before.reminders;
            if (before.location == collection.location && before.files == collection.files &&
                before.events == collection.events && before.reminders == collection.reminders) {
                return before;
            }
            former = before.index.get();
        }
    }
    collection.index = std::make_shared<const CollectionIndex>(
        collection.files, identifier,
        CollectionSettings{environment_->calendar, environment_->zoneInfoDirectory, settings.addresses,
                           environment_->diagnostics},
        former);
    return collection;
}

}  // namespace platform
