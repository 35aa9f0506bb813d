#include "PublishedLists.h"

#include <utility>

namespace hbr {

std::shared_ptr<const EventLists> PublishedLists::load() const {
    std::lock_guard lock(mutex_);
    return lists_;
}

bool PublishedLists::publish(std::uint64_t reload, EventLists lists) {
    auto next = std::make_shared<const EventLists>(std::move(lists));
    std::lock_guard lock(mutex_);
    lists_.swap(next);
    if (reload < newest_) return false;
    newest_ = reload;
    return true;
}

}  // namespace hbr
