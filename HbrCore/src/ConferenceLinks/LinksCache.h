#pragma once

#include <HbrCore/ConferenceLinks/VideoConferenceLink.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace hbr {

/// Results by the CRC-32 of their text. When full, what was stored first goes first. Any thread.
class LinksCache {
  public:
    using Links = std::shared_ptr<const std::vector<VideoConferenceLink>>;

    explicit LinksCache(std::size_t limit) : limit_(limit) {}

    Links find(std::uint32_t key) const;
    void store(std::uint32_t key, Links links);

  private:
    const std::size_t limit_;
    mutable std::mutex mutex_;
    std::unordered_map<std::uint32_t, Links> entries_;
    /// Keys in the order of their first storing, as a ring once it is full.
    std::vector<std::uint32_t> order_;
    std::size_t oldest_ = 0;
};

}  // namespace hbr
