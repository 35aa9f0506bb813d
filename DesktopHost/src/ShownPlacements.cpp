#include "ShownPlacements.h"

#include <utility>

namespace hbr {

ShownPlacements::ShownPlacements(PlacementsFile file, std::function<void()> changed)
    : file_(std::move(file)), changed_(std::move(changed)) {}

void ShownPlacements::load() {
    contents_ = file_.load();
}

void ShownPlacements::refresh() {
    auto read = file_.load();
    if (read.isBroken) return;
    contents_ = std::move(read);
    changed_();
}

void ShownPlacements::change(const PlacementsFile::Change& change) {
    file_.update(change);
    if (std::exchange(isRefreshPending_, true)) return;
    calls_.later([this] {
        isRefreshPending_ = false;
        refresh();
    });
}

}  // namespace hbr
