#pragma once

#include <Values/JsonText.h>
#include <Values/JsonValue.h>
#include <Values/KeyedDecoder.h>
#include <Values/PropertyValue.h>

#include <concepts>
#include <cstdint>
#include <string>
#include <vector>

namespace hbr {

/// The stored JSON form of a record, specialised beside it: `static JsonValue encode(const T&)` and
/// `static T decode(const JsonValue&)`, which throws platform::DecodingError.
template <class T>
struct JsonCoding;

template <class T>
    requires std::same_as<T, bool> || std::same_as<T, std::int64_t> || std::same_as<T, std::string>
struct JsonCoding<T> {
    static platform::JsonValue encode(const T& value) { return value; }
    static T decode(const platform::JsonValue& json) {
        const auto value = [&] {
            if constexpr (std::same_as<T, bool>) return json.asBool();
            if constexpr (std::same_as<T, std::int64_t>) return json.asInteger();
            if constexpr (std::same_as<T, std::string>) return json.asString();
        }();
        if (!value) throw platform::DecodingError("has the wrong type");
        return *value;
    }
};

template <class T>
struct JsonCoding<std::vector<T>> {
    static platform::JsonValue encode(const std::vector<T>& list) {
        platform::JsonValue array = platform::JsonValue::array();
        for (const T& element : list)
            array.append(JsonCoding<T>::encode(element));
        return array;
    }
    static std::vector<T> decode(const platform::JsonValue& json) {
        const auto* array = json.asArray();
        if (!array) throw platform::DecodingError("not a list");
        std::vector<T> list;
        list.reserve(array->size());
        for (const platform::JsonValue& element : *array)
            list.push_back(JsonCoding<T>::decode(element));
        return list;
    }
};

template <class T>
platform::Data encodeJsonData(const T& value) {
    return platform::dataOf(platform::writeJson(JsonCoding<T>::encode(value)));
}

/// Throws platform::DecodingError, which names what could not be read.
template <class T>
T decodeJsonData(const platform::Data& data) {
    auto json = platform::parseJson(platform::textOf(data));
    if (!json) throw platform::DecodingError("not JSON");
    return JsonCoding<T>::decode(*json);
}

}  // namespace hbr
