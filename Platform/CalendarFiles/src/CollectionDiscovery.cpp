#include <CalendarFiles/CollectionDiscovery.h>
#include <CalendarFiles/ContentLine.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <set>
#include <system_error>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr int deepestLevel = 4;

enum class EntryType { file, folder, other };

/// The entries of a folder. Read without std::filesystem, which makes a path of each: folders hold many
/// thousands of files.
class FolderEntries {
  public:
    explicit FolderEntries(const fs::path& folder) : stream_(opendir(folder.c_str()), closedir) {}

    explicit operator bool() const { return stream_ != nullptr; }
    /// False at the end.
    bool next() {
        entry_ = readdir(stream_.get());
        return entry_ != nullptr;
    }
    const char* name() const { return static_cast<const char*>(entry_->d_name); }
    /// Of what a link leads to. The folder itself says what most entries are.
    EntryType type() const {
        if (entry_->d_type == DT_REG) return EntryType::file;
        if (entry_->d_type == DT_DIR) return EntryType::folder;
        if (entry_->d_type != DT_LNK && entry_->d_type != DT_UNKNOWN) return EntryType::other;
        struct stat status{};
        if (fstatat(dirfd(stream_.get()), name(), &status, 0) != 0) return EntryType::other;
        return S_ISREG(status.st_mode)   ? EntryType::file
               : S_ISDIR(status.st_mode) ? EntryType::folder
                                         : EntryType::other;
    }

  private:
    std::unique_ptr<DIR, int (*)(DIR*)> stream_;
    const dirent* entry_ = nullptr;
};

class Discovery {
  public:
    Discovery(FoundLocation& found, std::string_view ending, DiagnosticsSink& diagnostics)
        : found_(found), ending_(ending), diagnostics_(diagnostics) {}

    void folder(const fs::path& location, const std::string& path, int level) {
        std::error_code error;
        const auto real = fs::canonical(location, error);
        if (error || !seen_.insert(real).second) return;
        FolderEntries entries(location);
        if (!entries) {
            const auto reason = std::generic_category().message(errno);
            diagnostics_.report({.file = location, .text = "folder cannot be read: " + reason});
            return;
        }
        found_.watched.push_back(location);
        FoundCollection collection{path, location, true, {}};
        std::vector<fs::path> inner;
        std::vector<std::string> names;
        bool isNamed = false;
        bool isOfOthers = false;
        while (entries.next()) {
            const std::string_view name = entries.name();
            if (name.starts_with('.')) continue;
            const auto type = entries.type();
            if (type == EntryType::folder) {
                inner.push_back(location / name);
            } else if (hasEnding(name)) {
                if (type == EntryType::file) {
                    names.emplace_back(name);
                } else {
                    diagnostics_.report({.file = location / name, .text = "is not a regular file; left out"});
                }
            } else if (name == "displayname" || name == "color") {
                isNamed = isNamed || type == EntryType::file;
            } else {
                isOfOthers = isOfOthers || isOfOtherKind(name);
            }
        }
        if ((isNamed && !isOfOthers) || !names.empty()) {
            std::sort(names.begin(), names.end());
            const auto prefix = (location / "").native();
            collection.files.reserve(names.size());
            for (const auto& name : names)
                collection.files.push_back(prefix + name);
            found_.collections.push_back(std::move(collection));
        }
        std::sort(inner.begin(), inner.end());
        if (level >= deepestLevel) return;
        for (const auto& next : inner) {
            const auto name = next.filename().string();
            folder(next, path.empty() ? name : path + "/" + name, level + 1);
        }
    }

  private:
    static bool endsWith(std::string_view name, std::string_view ending) {
        return name.size() > ending.size() &&
               equalIgnoringCase(name.substr(name.size() - ending.size()), ending);
    }
    bool hasEnding(std::string_view name) const { return endsWith(name, ending_); }
    /// A file of an address book where calendars are looked for, and the other way round.
    static bool isOfOtherKind(std::string_view name) {
        return endsWith(name, ".ics") || endsWith(name, ".vcf");
    }

    FoundLocation& found_;
    std::string_view ending_;
    DiagnosticsSink& diagnostics_;
    std::set<fs::path> seen_;
};

}  // namespace

std::string locationProblem(const fs::path& location) {
    std::error_code error;
    const auto status = fs::status(location, error);
    const bool isFolder = fs::is_directory(status);
    if (!fs::exists(status)) {
        return error && error != std::errc::no_such_file_or_directory
                   ? "cannot be reached: " + error.message()
                   : "there is no such file or folder";
    }
    if (!isFolder && !fs::is_regular_file(status)) return "is neither a regular file nor a folder";
    if (access(location.c_str(), isFolder ? R_OK | X_OK : R_OK) != 0) return "cannot be read: no permission";
    return "";
}

FoundLocation discoverCollections(const fs::path& location, std::string_view ending,
                                  const std::string& account, DiagnosticsSink& diagnostics) {
    FoundLocation found;
    found.problem = locationProblem(location);
    found.readable = found.problem.empty();
    found.watched.push_back(location);
    if (!found.readable) {
        diagnostics.report({.file = location, .field = account, .text = found.problem});
        return found;
    }
    std::error_code error;
    if (fs::is_directory(location, error)) {
        found.watched.clear();
        Discovery(found, ending, diagnostics).folder(location, "", 0);
        std::sort(found.collections.begin(), found.collections.end(),
                  [](const auto& a, const auto& b) { return a.path < b.path; });
    } else {
        found.collections.push_back({"", location, false, {location.native()}});
    }
    return found;
}

}  // namespace platform
