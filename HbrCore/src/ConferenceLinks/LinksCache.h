#pragma once

#include <HbrCore/ConferenceLinks/VideoConferenceLink.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace hbr {

/// Results by text: found by its CRC-32, given only when the text itself is the same. Of two texts with one
/// checksum the later one is kept. When full, the oldest entries go first. Any thread.
class LinksCache {
  public:
    using Links = std::shared_ptr<const std::vector<VideoConferenceLink>>;

    /// A text that alone has more bytes than `mostBytes` is not kept.
    LinksCache(std::size_t mostTexts, std::size_t mostBytes) : mostTexts_(mostTexts), mostBytes_(mostBytes) {}

    Links find(std::string_view text) const;
    void store(std::string_view text, Links links);

  private:
    struct Entry {
        std::string text;
        Links links;
    };

    const std::size_t mostTexts_;
    const std::size_t mostBytes_;
    mutable std::mutex mutex_;
    std::unordered_map<std::uint32_t, Entry> entries_;
    /// Each key once, in the order in which they came.
    std::deque<std::uint32_t> order_;
    std::size_t bytes_ = 0;
};

}  // namespace hbr
