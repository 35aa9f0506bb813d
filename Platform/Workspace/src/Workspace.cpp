#include <Workspace/Workspace.h>

#include "DesktopWorkspace.h"

#include <mutex>

namespace platform {

namespace {

struct SharedWorkspace {
    std::mutex mutex;
    std::shared_ptr<Workspace> workspace;
};

SharedWorkspace& sharedWorkspace() {
    static SharedWorkspace shared;
    return shared;
}

}  // namespace

std::shared_ptr<Workspace> Workspace::shared() {
    auto& shared = sharedWorkspace();
    std::lock_guard lock(shared.mutex);
    if (!shared.workspace) shared.workspace = std::make_shared<DesktopWorkspace>();
    return shared.workspace;
}

void Workspace::setShared(std::shared_ptr<Workspace> workspace) {
    auto& shared = sharedWorkspace();
    std::lock_guard lock(shared.mutex);
    shared.workspace = std::move(workspace);
}

}  // namespace platform
