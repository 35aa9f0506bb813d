#include "FileWatchPlan.h"

#include <sys/inotify.h>

namespace platform {
namespace fs = std::filesystem;
namespace {

constexpr std::uint32_t contentMask = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY |
                                      IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;
/// On the folders above only what happens to themselves, so that busy ones (a home) wake nobody.
constexpr std::uint32_t selfMask = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t arrivalMask = selfMask | IN_CREATE | IN_MOVED_TO;

bool isFolder(const fs::path& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

void addTarget(const fs::path& target, FileWatchPlan& plan) {
    bool isTargetFolder = isFolder(target);
    if (isTargetFolder) plan[target] |= contentMask;
    bool hasMissingBelow = false;
    for (fs::path below = target, folder = target.parent_path(); folder != below;
         below = folder, folder = folder.parent_path()) {
        if (!isFolder(folder)) {
            hasMissingBelow = true;
            continue;
        }
        bool isNearest = !isTargetFolder && below == target;
        plan[folder] |= isNearest ? contentMask : hasMissingBelow ? arrivalMask : selfMask;
        hasMissingBelow = false;
    }
}

}  // namespace

FileWatchPlan planWatches(const std::vector<fs::path>& targets) {
    FileWatchPlan plan;
    for (const fs::path& target : targets) {
        addTarget(target, plan);
        std::error_code error;
        fs::path real = fs::weakly_canonical(target, error);
        if (!error && real != target) addTarget(real, plan);
    }
    return plan;
}

}  // namespace platform
