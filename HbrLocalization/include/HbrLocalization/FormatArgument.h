#pragma once

#include <concepts>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <variant>

namespace hbr::L10n {

/// What stands for "%@": a text, never a number. Only valid during the call it is passed to.
class TextArgument {
  public:
    template <class T>
        requires std::is_convertible_v<const T&, std::string_view>
    TextArgument(const T& text) : text_(text) {}
    operator std::string_view() const { return text_; }

  private:
    std::string_view text_;
};

/// What stands for "%d" and "%i": a whole number, never a text, a truth value or a fraction.
class IntegerArgument {
  public:
    template <class T>
        requires(std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, char> &&
                 (std::signed_integral<T> || sizeof(T) < sizeof(std::int64_t)))
    IntegerArgument(T number) : number_(number) {}
    operator std::int64_t() const { return number_; }

  private:
    std::int64_t number_;
};

using FormatArgument = std::variant<std::string_view, std::int64_t>;

}  // namespace hbr::L10n
