#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// 128 bits; written in upper case, groups of 8, 4, 4, 4 and 12 hexadecimal digits.
class Uuid {
  public:
    static Uuid random();
    /// Exactly 36 characters, either letter case.
    static std::optional<Uuid> parse(std::string_view text);
    std::string uuidString() const;

    friend bool operator==(const Uuid&, const Uuid&) = default;
    friend auto operator<=>(const Uuid&, const Uuid&) = default;

  private:
    std::array<std::uint8_t, 16> bytes_{};
};

}  // namespace platform
