#pragma once

#include "MainQueueCalls.h"

#include <DesktopHost/PlacementsFile.h>

#include <functional>

namespace hbr {

/// The placements that the running host shows. Main thread.
class ShownPlacements {
  public:
    /// `changed` is called after the contents were read again.
    ShownPlacements(PlacementsFile file, std::function<void()> changed);

    const PlacementsFile& file() const { return file_; }
    const PlacementsFile::Contents& contents() const { return contents_; }

    /// At the start: what can be read.
    void load();
    /// After the file changed. While it cannot be read (half written, or with a slip) the contents stay.
    void refresh();
    /// Writes the change and calls `refresh` later, not inside of the call of a window that may be closed by
    /// it.
    void change(const PlacementsFile::Change& change);

  private:
    const PlacementsFile file_;
    const std::function<void()> changed_;
    PlacementsFile::Contents contents_;
    bool isRefreshPending_ = false;
    MainQueueCalls calls_;
};

}  // namespace hbr
