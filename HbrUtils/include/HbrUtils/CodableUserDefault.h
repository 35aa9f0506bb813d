#pragma once

#include <HbrUtils/JsonCoding.h>
#include <HbrUtils/UserDefault.h>

#include <optional>

namespace hbr {

/// Logs the one message for a stored list that is absent or cannot be read.
void logUnreadablePersistedRules();

/// A value that is stored as a data block of JSON.
template <class T>
struct JsonDataCoding {
    static platform::PropertyValue encode(const T& value) { return encodeJsonData(value); }
    static std::optional<T> decode(const platform::PropertyValue& stored) {
        const platform::Data* data = stored.asData();
        if (!data) return std::nullopt;
        try {
            return decodeJsonData<T>(*data);
        } catch (const platform::DecodingError&) {
            return std::nullopt;
        }
    }
    static void reportDefault() { logUnreadablePersistedRules(); }
};

template <class T>
using CodableUserDefault = UserDefault<T, JsonDataCoding<T>>;

}  // namespace hbr
