#include "LinksCache.h"

namespace hbr {

LinksCache::Links LinksCache::find(std::uint32_t key) const {
    std::lock_guard lock(mutex_);
    const auto entry = entries_.find(key);
    return entry == entries_.end() ? nullptr : entry->second;
}

void LinksCache::store(std::uint32_t key, Links links) {
    std::lock_guard lock(mutex_);
    if (!entries_.insert_or_assign(key, std::move(links)).second) return;
    if (order_.size() < limit_) {
        order_.push_back(key);
        return;
    }
    entries_.erase(order_[oldest_]);
    order_[oldest_] = key;
    oldest_ = (oldest_ + 1) % limit_;
}

}  // namespace hbr
