#pragma once

#include <Values/PropertyValue.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace hbr {

/// How a value type is written to and read from a property list. Reading converts between types of
/// numbers only when nothing is lost; a list has the wrong type when one of its elements has.
template <class T>
struct PropertyCoding;

template <>
struct PropertyCoding<bool> {
    static platform::PropertyValue encode(bool value) { return value; }
    static std::optional<bool> decode(const platform::PropertyValue& stored) { return stored.asBool(); }
};

template <>
struct PropertyCoding<std::int64_t> {
    static platform::PropertyValue encode(std::int64_t value) { return value; }
    static std::optional<std::int64_t> decode(const platform::PropertyValue& stored) {
        return stored.asInteger();
    }
};

template <>
struct PropertyCoding<std::string> {
    static platform::PropertyValue encode(const std::string& value) { return value; }
    static std::optional<std::string> decode(const platform::PropertyValue& stored) {
        const std::string* text = stored.asString();
        return text ? std::optional(*text) : std::nullopt;
    }
};

template <>
struct PropertyCoding<std::vector<std::string>> {
    static platform::PropertyValue encode(const std::vector<std::string>& value) {
        return platform::PropertyArray(value.begin(), value.end());
    }
    static std::optional<std::vector<std::string>> decode(const platform::PropertyValue& stored) {
        return stored.asStrings();
    }
};

template <>
struct PropertyCoding<std::vector<std::int64_t>> {
    static platform::PropertyValue encode(const std::vector<std::int64_t>& value) {
        return platform::PropertyArray(value.begin(), value.end());
    }
    static std::optional<std::vector<std::int64_t>> decode(const platform::PropertyValue& stored) {
        return stored.asIntegers();
    }
};

template <class T>
struct PropertyCoding<std::optional<T>> {
    static platform::PropertyValue encode(const std::optional<T>& value) {
        return PropertyCoding<T>::encode(*value);
    }
    static std::optional<std::optional<T>> decode(const platform::PropertyValue& stored) {
        auto value = PropertyCoding<T>::decode(stored);
        return value ? std::optional(std::move(value)) : std::nullopt;
    }
};

}  // namespace hbr
