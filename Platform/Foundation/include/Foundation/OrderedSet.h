#pragma once

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
        if (!seen_.insert(element).second) return false;
        elements_.push_back(std::move(element));
        return true;
    }
    bool contains(const Element& element) const { return seen_.contains(element); }
    std::size_t size() const { return elements_.size(); }
    bool empty() const { return elements_.empty(); }
    auto begin() const { return elements_.begin(); }
    auto end() const { return elements_.end(); }
    const std::vector<Element>& elements() const { return elements_; }

  private:
    std::vector<Element> elements_;
    std::unordered_set<Element, Hash> seen_;
};

}  // namespace platform
