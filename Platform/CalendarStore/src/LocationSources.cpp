#include <CalendarStore/LocationSources.h>

#include <CalendarFiles/CollectionDiscovery.h>
#include <CalendarFiles/ContentLine.h>
#include <CalendarFiles/FileCache.h>
#include <System/FileStamp.h>
#include <System/FileWatcher.h>
#include <System/Files.h>
#include <System/InParallel.h>

#include <utility>

#include <fcntl.h>
#include <unistd.h>

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

/// AT_FDCWD without one.
class OpenFolder {
  public:
    explicit OpenFolder(const std::filesystem::path& folder) {
        if (folder.empty()) return;
        const int opened = open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        if (opened >= 0) number_ = opened;
    }
    ~OpenFolder() {
        if (number_ >= 0) close(number_);
    }
    OpenFolder(const OpenFolder&) = delete;
    OpenFolder& operator=(const OpenFolder&) = delete;

    int number() const { return number_; }

  private:
    int number_ = AT_FDCWD;
};

CalendarCollection collectionOf(const Account& account, FoundCollection found) {
    CalendarCollection collection{.path = std::move(found.path), .location = std::move(found.location)};
    // The files of a folder do not name it: each may be a calendar of its own elsewhere.
    if (found.isFolder) {
        collection.title =
            firstLine(collection.location / "displayname")
                .value_or(collection.path.empty() ? account.name : collection.location.filename().string());
        collection.color = firstLine(collection.location / "color").value_or("");
    }
    collection.texts.resize(found.files.size());
    // Below the open folder, which spares the system the way to it for each file.
    const OpenFolder folder(found.isFolder ? collection.location : std::filesystem::path());
    const auto skipped = folder.number() < 0 ? 0 : (collection.location / "").native().size();
    inParallel(found.files.size(), [&](std::size_t i) {
        auto& file = found.files[i];
        const auto version = FileStamp::of(file.c_str() + skipped, folder.number()).number();
        collection.texts[i] = {std::move(file), version};
    });
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

std::optional<std::string> LocationSources::read(const CalendarText& text,
                                                 DiagnosticsSink& diagnostics) const {
    return readForCache(text.name, diagnostics);
}

std::shared_ptr<void> LocationSources::watch(const std::vector<std::filesystem::path>& watched,
                                             std::function<void()> changed) const {
    return std::make_shared<FileWatcher>(
        watched, [changed = std::move(changed)](const auto&) { changed(); }, FileWatcher::defaultQuietSeconds,
        diagnostics_);
}

}  // namespace platform
