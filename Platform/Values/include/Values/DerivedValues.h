#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <typeindex>
#include <utility>

namespace platform {

/// Values that other rooms make of an environment and keep with it: string tables, formatters. By type and
/// name, each made once. A copy starts empty, because the copied environment may be changed. Any thread.
/// A value must not own the environment that keeps it.
class DerivedValues {
  public:
    DerivedValues() = default;
    DerivedValues(const DerivedValues&) {}
    DerivedValues& operator=(const DerivedValues&) {
        clear();
        return *this;
    }
    ~DerivedValues() = default;

    /// `make()` gives a shared_ptr to a constant T; nothing is kept as well.
    template <typename T, typename Make>
    std::shared_ptr<const T> get(std::string_view name, Make make) const {
        const std::lock_guard lock(mutex_);
        const Key key{typeid(T), std::string(name)};
        auto found = values_.find(key);
        if (found == values_.end()) {
            std::shared_ptr<const T> made = make();
            found = values_.emplace(key, std::move(made)).first;
        }
        return std::static_pointer_cast<const T>(found->second);
    }

    void clear() {
        const std::lock_guard lock(mutex_);
        values_.clear();
    }

  private:
    using Key = std::pair<std::type_index, std::string>;

    /// Recursive: making one value may ask for another.
    mutable std::recursive_mutex mutex_;
    mutable std::map<Key, std::shared_ptr<const void>> values_;
};

}  // namespace platform
