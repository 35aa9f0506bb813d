#pragma once

#include <Values/JsonValue.h>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace platform {

/// Why a keyed record could not be read: names the key.
class DecodingError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads the keys of one record; a required key that is absent or has another type throws DecodingError,
/// an optional one that is absent or null is nothing.
class KeyedDecoder {
  public:
    /// Throws when `record` is not an object.
    explicit KeyedDecoder(const JsonValue& record);

    std::string string(std::string_view key) const;
    std::int64_t integer(std::string_view key) const;
    double number(std::string_view key) const;
    bool boolean(std::string_view key) const;
    /// Throws when present, not null and not a text.
    std::optional<std::string> optionalString(std::string_view key) const;
    const JsonValue& value(std::string_view key) const;
    const JsonValue* find(std::string_view key) const { return record_.find(key); }

  private:
    const JsonValue& record_;
};

}  // namespace platform
