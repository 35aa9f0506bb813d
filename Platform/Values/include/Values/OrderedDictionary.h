#pragma once

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace platform {

/// Unique keys in the order of their first insertion.
template <class Key, class Value, class Hash = std::hash<Key>>
class OrderedDictionary {
  public:
    using Entry = std::pair<Key, Value>;

    /// The value of the key, made at the end when it is new.
    Value& operator[](const Key& key) {
        auto [position, isNew] = index_.try_emplace(key, entries_.size());
        if (isNew) entries_.emplace_back(key, Value{});
        return entries_[position->second].second;
    }
    const Value* find(const Key& key) const {
        auto position = index_.find(key);
        return position == index_.end() ? nullptr : &entries_[position->second].second;
    }
    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

  private:
    std::vector<Entry> entries_;
    std::unordered_map<Key, std::size_t, Hash> index_;
};

}  // namespace platform
