#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <unordered_set>
#include <utility>
#include <vector>

namespace platform {

/// Unique elements in the order of their first insertion.
template <class Element, class Hash = std::hash<Element>>
class OrderedSet {
  public:
    /// False when an equal element is there already; it stays where it is.
    bool insert(Element element) {
        if (contains(element)) return false;
        if (elements_.size() >= few) {
            if (seen_.empty()) seen_.insert(elements_.begin(), elements_.end());
            seen_.insert(element);
        }
        elements_.push_back(std::move(element));
        return true;
    }
    bool contains(const Element& element) const {
        if (!seen_.empty()) return seen_.contains(element);
        return std::find(elements_.begin(), elements_.end(), element) != elements_.end();
    }
    std::size_t size() const { return elements_.size(); }
    bool empty() const { return elements_.empty(); }
    auto begin() const { return elements_.begin(); }
    auto end() const { return elements_.end(); }
    const std::vector<Element>& elements() const& { return elements_; }
    std::vector<Element> elements() && { return std::move(elements_); }

  private:
    /// Up to this many are compared one by one, which costs no second copy.
    static constexpr std::size_t few = 8;
    std::vector<Element> elements_;
    /// Filled from the first element beyond `few` on.
    std::unordered_set<Element, Hash> seen_;
};

}  // namespace platform
