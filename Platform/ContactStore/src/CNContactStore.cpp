#include <CalendarFiles/CollectionDiscovery.h>
#include <CalendarFiles/FileCache.h>
#include <CalendarFiles/TextDecoding.h>
#include <ContactStore/CNContactStore.h>
#include <System/FileWatcher.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>

#include "ContactIndex.h"
#include "PictureReader.h"

namespace platform {
namespace {

CardFile readCardFile(const std::filesystem::path& path, std::string bytes, DiagnosticsSink& diagnostics) {
    const std::string text = withoutUtf16(std::move(bytes));
    const auto complain = [&](int line, const std::string& property, const std::string& reason) {
        diagnostics.report({.file = path, .line = line, .field = property, .text = reason});
    };
    CardFile file{path, readCards(text, complain)};
    if (file.cards.empty()) diagnostics.report({.file = path, .text = "holds no card that can be read"});
    return file;
}

/// Everything that was read at one time. Constant once made.
struct Snapshot {
    std::vector<ContactSourceReport> reports;
    std::vector<std::filesystem::path> watched;
    ContactIndex index;
};

}  // namespace

struct CNContactStore::State {
    State(EnvironmentRef world, ContactSources given)
        : environment(std::move(world)),
          sources(std::move(given)),
          files(environment->diagnostics,
                [](const auto& path, std::string bytes, DiagnosticsSink& diagnostics) {
                    return readCardFile(path, std::move(bytes), diagnostics);
                }),
          pictures(environment->diagnostics) {}

    std::shared_ptr<const Snapshot> snapshot() {
        std::lock_guard lock(mutex);
        if (!current || changed.exchange(false)) read();
        return current;
    }

    void readAgain() {
        std::lock_guard lock(mutex);
        read();
    }

    void startWatching() {
        std::lock_guard lock(mutex);
        if (std::exchange(isWatching, true)) return;
        if (current) read();
    }

    /// Under the lock. What changes before a new watch is installed is noticed by reading once more.
    void read() {
        do {
            changed = false;
            current = load();
        } while (isWatching && watch(current->watched));
    }

    std::shared_ptr<const Snapshot> load() {
        std::vector<ContactSourceReport> reports;
        std::vector<std::filesystem::path> watched = {sources.definedIn};
        std::vector<std::shared_ptr<const CardFile>> all;
        for (auto& source : sources.load()) {
            const auto found =
                discoverCollections(source.location, ".vcf", source.name, *environment->diagnostics);
            ContactSourceReport report{std::move(source), found.readable, found.problem, 0, 0};
            for (const auto& collection : found.collections) {
                for (const auto& path : collection.files) {
                    auto file = files.read(path);
                    if (!file) continue;
                    ++report.files;
                    report.cards += file->cards.size();
                    all.push_back(std::move(file));
                }
            }
            watched.insert(watched.end(), found.watched.begin(), found.watched.end());
            reports.push_back(std::move(report));
        }
        files.forgetUnused();
        return std::make_shared<const Snapshot>(
            Snapshot{std::move(reports), std::move(watched), ContactIndex(std::move(all))});
    }

    /// True when something is watched that was not before.
    bool watch(const std::vector<std::filesystem::path>& paths) {
        if (watcher && paths == watchedPaths) return false;
        watchedPaths = paths;
        watcher.reset();
        watcher = std::make_unique<FileWatcher>(
            paths, [this](const auto&) { changed = true; }, FileWatcher::defaultQuietSeconds,
            environment->diagnostics);
        return true;
    }

    EnvironmentRef environment;
    ContactSources sources;
    std::mutex mutex;
    FileCache<CardFile> files;
    PictureReader pictures;
    std::shared_ptr<const Snapshot> current;
    std::atomic<bool> changed = false;
    bool isWatching = false;
    std::vector<std::filesystem::path> watchedPaths;
    /// Last: its thread sets `changed`.
    std::unique_ptr<FileWatcher> watcher;
};

CNContactStore::CNContactStore(EnvironmentRef environment, ContactSources sources)
    : state_(std::make_unique<State>(std::move(environment), std::move(sources))) {}

CNContactStore::~CNContactStore() = default;

CNAuthorizationStatus CNContactStore::authorizationStatus() const {
    const auto sources = state_->sources.load();
    if (sources.empty()) return CNAuthorizationStatus::notDetermined;
    const bool canBeRead = std::any_of(sources.begin(), sources.end(), [](const ContactSource& source) {
        return locationProblem(source.location).empty();
    });
    return canBeRead ? CNAuthorizationStatus::authorized : CNAuthorizationStatus::denied;
}

void CNContactStore::requestAccess(const AccessCompletion& completion) {
    state_->readAgain();
    if (completion) completion(authorizationStatus() == CNAuthorizationStatus::authorized, nullptr);
}

std::vector<CNContact> CNContactStore::unifiedContacts(const ContactPredicate& predicate,
                                                       const std::vector<CNContactKey>& keysToFetch) const {
    const auto isWanted = [&](CNContactKey key) {
        return std::find(keysToFetch.begin(), keysToFetch.end(), key) != keysToFetch.end();
    };
    const auto snapshot = state_->snapshot();
    std::vector<CNContact> contacts;
    for (const auto& place : snapshot->index.find(predicate)) {
        const ContactCard& card = place.card();
        CNContact contact{.identifier = place.identifier(),
                          .givenName = isWanted(CNContactGivenNameKey) ? card.givenName : "",
                          .familyName = isWanted(CNContactFamilyNameKey) ? card.familyName : "",
                          .thumbnailImageData = std::nullopt};
        if (isWanted(CNContactThumbnailImageDataKey)) {
            contact.thumbnailImageData = state_->pictures.read(place);
        }
        contacts.push_back(std::move(contact));
    }
    return contacts;
}

void CNContactStore::startWatching() {
    state_->startWatching();
}

std::vector<ContactSourceReport> CNContactStore::report() const {
    return state_->snapshot()->reports;
}

void CNContactStore::examinePictures() const {
    const auto snapshot = state_->snapshot();
    for (const auto& place : snapshot->index.all())
        state_->pictures.read(place);
}

}  // namespace platform
