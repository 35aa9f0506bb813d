#include <CalendarFiles/CollectionDiscovery.h>
#include <CalendarFiles/ContentLine.h>

#include <algorithm>
#include <set>

#include <unistd.h>

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr int deepestLevel = 4;

/// Not by way of path::filename(): folders hold many thousands of files.
std::string_view lastComponent(const fs::path& entry) {
    const std::string_view whole = entry.native();
    return whole.substr(whole.rfind('/') + 1);
}

class Discovery {
  public:
    Discovery(FoundLocation& found, std::string_view ending, DiagnosticsSink& diagnostics)
        : found_(found), ending_(ending), diagnostics_(diagnostics) {}

    void folder(const fs::path& location, const std::string& path, int level) {
        std::error_code error;
        const auto real = fs::canonical(location, error);
        if (error || !seen_.insert(real).second) return;
        fs::directory_iterator entries(location, error);
        if (error) {
            diagnostics_.report({.file = location, .text = "folder cannot be read: " + error.message()});
            return;
        }
        found_.watched.push_back(location);
        FoundCollection collection{path, location, true, {}};
        std::vector<fs::path> inner;
        bool isNamed = false;
        bool isOfOthers = false;
        for (; entries != fs::directory_iterator(); entries.increment(error)) {
            if (error) break;
            const auto& entry = entries->path();
            const auto name = lastComponent(entry);
            if (name.starts_with('.')) continue;
            // The folder itself says what kind its entries are; only links are looked at.
            std::error_code ignored;
            if (entries->is_directory(ignored)) {
                inner.push_back(entry);
            } else if (hasEnding(name)) {
                if (entries->is_regular_file(ignored)) {
                    collection.files.push_back(entry);
                } else {
                    diagnostics_.report({.file = entry, .text = "is not a regular file; left out"});
                }
            } else if (name == "displayname" || name == "color") {
                isNamed = isNamed || entries->is_regular_file(ignored);
            } else {
                isOfOthers = isOfOthers || isOfOtherKind(name);
            }
        }
        if ((isNamed && !isOfOthers) || !collection.files.empty()) {
            std::ranges::sort(collection.files, {}, &fs::path::native);
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
        found.collections.push_back({"", location, false, {location}});
    }
    return found;
}

}  // namespace platform
