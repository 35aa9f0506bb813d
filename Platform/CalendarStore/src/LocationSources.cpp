#include <CalendarStore/LocationSources.h>

#include <CalendarFiles/CollectionDiscovery.h>
#include <CalendarFiles/ContentLine.h>
#include <CalendarFiles/FileCache.h>
#include <System/FileStamp.h>
#include <System/FileWatcher.h>
#include <System/Files.h>

#include <utility>

namespace platform {
namespace {

constexpr std::uintmax_t longestName = 4096;

std::optional<std::string> firstLine(const std::filesystem::path& file) {
    std::error_code error;
    const auto text = readRegularFile(file, error, longestName);
    if (!text) return std::nullopt;
    const auto line = trimmedAscii(std::string_view(*text).substr(0, text->find('\n')));
    return line.empty() ? std::nullopt : std::optional<std::string>(line);
}

CalendarCollection collectionOf(const Account& account, FoundCollection found) {
    CalendarCollection collection{.path = std::move(found.path), .location = std::move(found.location)};
    // The files of a folder do not name it: each may be a calendar of its own elsewhere.
    if (found.isFolder) {
        collection.title =
            firstLine(collection.location / "displayname")
                .value_or(collection.path.empty() ? account.name : collection.location.filename().string());
        collection.color = firstLine(collection.location / "color").value_or("");
    }
    collection.texts.reserve(found.files.size());
    for (auto& file : found.files) {
        const auto version = FileStamp::of(file).number();
        collection.texts.push_back({std::move(file), version});
    }
    return collection;
}

}  // namespace

LocationSources::LocationSources(std::vector<Account> accounts, std::shared_ptr<DiagnosticsSink> diagnostics)
    : accounts_(std::move(accounts)), diagnostics_(std::move(diagnostics)) {}

std::vector<Account> LocationSources::accounts() const {
    return accounts_;
}

std::string LocationSources::problem(const Account& account) const {
    auto problem = locationProblem(account.location);
    if (!problem.empty())
        diagnostics_->report({.file = account.location, .field = account.name, .text = problem});
    return problem;
}

AccountContents LocationSources::load(const Account& account) const {
    auto found = discoverCollections(account.location, ".ics", account.name, *diagnostics_);
    AccountContents contents{.problem = std::move(found.problem), .watched = std::move(found.watched)};
    for (auto& collection : found.collections)
        contents.collections.push_back(collectionOf(account, std::move(collection)));
    return contents;
}

std::optional<std::string> LocationSources::read(const CalendarText& text) const {
    return readForCache(text.name, *diagnostics_);
}

std::shared_ptr<void> LocationSources::watch(const std::vector<std::filesystem::path>& watched,
                                             std::function<void()> changed) const {
    return std::make_shared<FileWatcher>(
        watched, [changed = std::move(changed)](const auto&) { changed(); }, FileWatcher::defaultQuietSeconds,
        diagnostics_);
}

}  // namespace platform
