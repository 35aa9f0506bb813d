#include "LinksCache.h"

#include <TimeAndText/Text.h>

#include <utility>

namespace hbr {

LinksCache::Links LinksCache::find(std::string_view text) const {
    const auto key = platform::crc32(text);
    std::lock_guard lock(mutex_);
    const auto entry = entries_.find(key);
    return entry == entries_.end() || entry->second.text != text ? nullptr : entry->second.links;
}

void LinksCache::store(std::string_view text, Links links) {
    if (text.size() > mostBytes_) return;
    const auto key = platform::crc32(text);
    Entry added{std::string(text), std::move(links)};
    std::lock_guard lock(mutex_);
    const auto [entry, isNew] = entries_.try_emplace(key);
    if (isNew) order_.push_back(key);
    bytes_ += added.text.size() - entry->second.text.size();
    entry->second = std::move(added);
    while (entries_.size() > mostTexts_ || bytes_ > mostBytes_) {
        const auto oldest = entries_.find(order_.front());
        bytes_ -= oldest->second.text.size();
        entries_.erase(oldest);
        order_.pop_front();
    }
}

}  // namespace hbr
