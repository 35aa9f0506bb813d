#pragma once

#include <iterator>
#include <utility>

namespace hbr {

/// The element at a position, or nullptr when there is none. Only valid as long as the list is.
template <class List, class Index>
const auto* elementAt(const List& list, Index index) {
    const bool isValid = std::cmp_greater_equal(index, 0) && std::cmp_less(index, std::size(list));
    return isValid ? std::data(list) + index : nullptr;
}
template <class List, class Index>
const auto* elementAt(const List&& list, Index index) = delete;

}  // namespace hbr
