#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <utility>

namespace hbr {

inline bool isNilOrEmpty(const std::optional<std::string>& text) {
    return !text || text->empty();
}

/// The value if the predicate holds for it. What the predicate throws is passed on.
template <class T, std::predicate<const T&> Predicate>
std::optional<T> takeIf(T value, Predicate predicate) {
    if (!predicate(std::as_const(value))) return std::nullopt;
    return std::optional<T>(std::move(value));
}

}  // namespace hbr
