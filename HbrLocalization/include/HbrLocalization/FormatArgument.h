#pragma once

#include <array>
#include <charconv>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace hbr::L10n {

template <class T>
concept IsText = std::is_convertible_v<const T&, std::string_view>;
template <class T>
concept DescribesItself = requires(const T& value) {
    { value.description() } -> std::convertible_to<std::string>;
};
template <class T>
concept HasDescription =
    (std::is_arithmetic_v<T> && !std::same_as<T, char> && !std::same_as<T, wchar_t>) || DescribesItself<T>;

/// The argument of "%@": any value, by its textual description. A text is only valid during the call it is
/// passed to.
class ValueArgument {
  public:
    template <IsText T>
    ValueArgument(const T& text) : text_(text) {}
    template <HasDescription T>
        requires(!IsText<T>)
    ValueArgument(const T& value) : description_(descriptionOf(value)) {}

    operator std::string_view() const { return description_ ? *description_ : text_; }

  private:
    template <class T>
    static std::string descriptionOf(const T& value) {
        if constexpr (DescribesItself<T>) {
            return value.description();
        } else if constexpr (std::same_as<T, bool>) {
            return value ? "true" : "false";
        } else {
            std::array<char, 64> digits{};
            const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
            return {digits.data(), end.ptr};
        }
    }

    std::string_view text_;
    std::optional<std::string> description_;
};

/// The argument of "%d" and "%i": a whole number, never a text, a truth value or a fraction.
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
