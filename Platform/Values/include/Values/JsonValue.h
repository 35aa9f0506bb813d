#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace platform {

/// A JSON value; objects keep the order in which keys were first set.
class JsonValue {
  public:
    using Array = std::vector<JsonValue>;
    using Object = std::vector<std::pair<std::string, JsonValue>>;
    using Storage = std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, Array, Object>;

    JsonValue() : storage_(nullptr) {}
    JsonValue(std::nullptr_t) : storage_(nullptr) {}
    JsonValue(bool value) : storage_(value) {}
    JsonValue(std::int64_t value) : storage_(value) {}
    JsonValue(int value) : storage_(std::int64_t{value}) {}
    JsonValue(double value) : storage_(value) {}
    JsonValue(std::string value) : storage_(std::move(value)) {}
    JsonValue(std::string_view value) : storage_(std::string(value)) {}
    JsonValue(const char* value) : storage_(std::string(value)) {}
    JsonValue(Array value) : storage_(std::move(value)) {}
    JsonValue(Object value) : storage_(std::move(value)) {}
    static JsonValue array() { return JsonValue(Array{}); }
    static JsonValue object() { return JsonValue(Object{}); }

    const Storage& storage() const { return storage_; }
    bool isNull() const { return std::holds_alternative<std::nullptr_t>(storage_); }
    const bool* asBool() const { return std::get_if<bool>(&storage_); }
    /// 60 and 60.0; nothing for 60.5, true and texts.
    std::optional<std::int64_t> asInteger() const;
    std::optional<double> asDouble() const;
    const std::string* asString() const { return std::get_if<std::string>(&storage_); }
    const Array* asArray() const { return std::get_if<Array>(&storage_); }
    const Object* asObject() const { return std::get_if<Object>(&storage_); }

    /// Member of an object; nullptr when absent or this is not an object.
    const JsonValue* find(std::string_view key) const;
    /// Makes this an object when it is null.
    JsonValue& set(std::string_view key, JsonValue value);
    /// Sets the key only when there is a value.
    template <class T>
    JsonValue& setIfPresent(std::string_view key, const std::optional<T>& value) {
        if (value) set(key, JsonValue(*value));
        return *this;
    }
    /// Makes this an array when it is null.
    void append(JsonValue value);

    friend bool operator==(const JsonValue&, const JsonValue&) = default;

  private:
    Storage storage_;
};

}  // namespace platform
