#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace platform {

using Data = std::vector<std::uint8_t>;

class PropertyValue;
using PropertyArray = std::vector<PropertyValue>;

/// Keys in the order of their first insertion.
class PropertyDictionary {
  public:
    using Entry = std::pair<std::string, PropertyValue>;

    const PropertyValue* find(std::string_view key) const;
    void set(std::string_view key, PropertyValue value);
    /// True when there was an entry.
    bool remove(std::string_view key);
    bool empty() const;
    std::size_t size() const;
    std::vector<Entry>::const_iterator begin() const;
    std::vector<Entry>::const_iterator end() const;

    friend bool operator==(const PropertyDictionary&, const PropertyDictionary&);

  private:
    std::vector<Entry> entries_;
};

/// One value of the property-list kinds. Reads convert between number kinds only when nothing is lost:
/// 1 ↔ true, 5.0 → 5; 2 is not a boolean, 5.5 not an integer, a text never a number.
class PropertyValue {
  public:
    using Storage =
        std::variant<bool, std::int64_t, double, std::string, Data, PropertyArray, PropertyDictionary>;

    PropertyValue(bool value) : storage_(value) {}
    PropertyValue(std::int64_t value) : storage_(value) {}
    PropertyValue(int value) : storage_(std::int64_t{value}) {}
    PropertyValue(double value) : storage_(value) {}
    PropertyValue(std::string value) : storage_(std::move(value)) {}
    PropertyValue(std::string_view value) : storage_(std::string(value)) {}
    PropertyValue(const char* value) : storage_(std::string(value)) {}
    PropertyValue(Data value) : storage_(std::move(value)) {}
    PropertyValue(PropertyArray value) : storage_(std::move(value)) {}
    PropertyValue(PropertyDictionary value) : storage_(std::move(value)) {}

    const Storage& storage() const { return storage_; }

    std::optional<bool> asBool() const;
    std::optional<std::int64_t> asInteger() const;
    std::optional<double> asDouble() const;
    const std::string* asString() const;
    const Data* asData() const;
    const PropertyArray* asArray() const;
    const PropertyDictionary* asDictionary() const;
    /// nullopt unless every element of an array has that type.
    std::optional<std::vector<std::string>> asStrings() const;
    std::optional<std::vector<std::int64_t>> asIntegers() const;

    friend bool operator==(const PropertyValue&, const PropertyValue&) = default;

  private:
    Storage storage_;
};

// Here, where the entries' type is complete.
inline bool PropertyDictionary::empty() const {
    return entries_.empty();
}
inline std::size_t PropertyDictionary::size() const {
    return entries_.size();
}
inline std::vector<PropertyDictionary::Entry>::const_iterator PropertyDictionary::begin() const {
    return entries_.begin();
}
inline std::vector<PropertyDictionary::Entry>::const_iterator PropertyDictionary::end() const {
    return entries_.end();
}

Data dataOf(std::string_view text);
std::string_view textOf(const Data& data);

}  // namespace platform
