#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <vector>

namespace platform {

/// Which folders inotify has to watch, with which mask, so that every change of the targets is reported, also
/// when they or the folders above them vanish and come back.
using FileWatchPlan = std::map<std::filesystem::path, std::uint32_t>;

FileWatchPlan planWatches(const std::vector<std::filesystem::path>& targets);

}  // namespace platform
