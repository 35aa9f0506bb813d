#include <Values/PropertyValue.h>

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

std::optional<std::int64_t> exactInteger(double value) {
    // The bounds are exact doubles; 2^63 itself no longer fits.
    constexpr double limit = 9223372036854775808.0;
    if (!(value >= -limit && value < limit) || std::trunc(value) != value) return std::nullopt;
    return static_cast<std::int64_t>(value);
}

}  // namespace

const PropertyValue* PropertyDictionary::find(std::string_view key) const {
    auto entry = std::ranges::find(entries_, key, &Entry::first);
    return entry == entries_.end() ? nullptr : &entry->second;
}

void PropertyDictionary::set(std::string_view key, PropertyValue value) {
    auto entry = std::ranges::find(entries_, key, &Entry::first);
    if (entry == entries_.end()) {
        entries_.emplace_back(std::string(key), std::move(value));
    } else {
        entry->second = std::move(value);
    }
}

bool PropertyDictionary::remove(std::string_view key) {
    return std::erase_if(entries_, [key](const Entry& entry) { return entry.first == key; }) > 0;
}

bool operator==(const PropertyDictionary& a, const PropertyDictionary& b) {
    return a.size() == b.size() && std::ranges::all_of(a, [&b](const PropertyDictionary::Entry& entry) {
               const PropertyValue* other = b.find(entry.first);
               return other && *other == entry.second;
           });
}

std::optional<bool> PropertyValue::asBool() const {
    if (auto* value = std::get_if<bool>(&storage_)) return *value;
    auto integer = asInteger();
    if (!integer || (*integer != 0 && *integer != 1)) return std::nullopt;
    return *integer == 1;
}

std::optional<std::int64_t> PropertyValue::asInteger() const {
    if (auto* value = std::get_if<std::int64_t>(&storage_)) return *value;
    if (auto* value = std::get_if<bool>(&storage_)) return *value ? 1 : 0;
    if (auto* value = std::get_if<double>(&storage_)) return exactInteger(*value);
    return std::nullopt;
}

std::optional<double> PropertyValue::asDouble() const {
    if (auto* value = std::get_if<double>(&storage_)) return *value;
    auto integer = asInteger();
    if (!integer) return std::nullopt;
    auto value = static_cast<double>(*integer);
    if (exactInteger(value) != integer) return std::nullopt;
    return value;
}

const std::string* PropertyValue::asString() const {
    return std::get_if<std::string>(&storage_);
}
const Data* PropertyValue::asData() const {
    return std::get_if<Data>(&storage_);
}
const PropertyArray* PropertyValue::asArray() const {
    return std::get_if<PropertyArray>(&storage_);
}
const PropertyDictionary* PropertyValue::asDictionary() const {
    return std::get_if<PropertyDictionary>(&storage_);
}

std::optional<std::vector<std::string>> PropertyValue::asStrings() const {
    const PropertyArray* array = asArray();
    if (!array) return std::nullopt;
    std::vector<std::string> texts;
    texts.reserve(array->size());
    for (const PropertyValue& element : *array) {
        const std::string* text = element.asString();
        if (!text) return std::nullopt;
        texts.push_back(*text);
    }
    return texts;
}

std::optional<std::vector<std::int64_t>> PropertyValue::asIntegers() const {
    const PropertyArray* array = asArray();
    if (!array) return std::nullopt;
    std::vector<std::int64_t> integers;
    integers.reserve(array->size());
    for (const PropertyValue& element : *array) {
        auto integer = element.asInteger();
        if (!integer) return std::nullopt;
        integers.push_back(*integer);
    }
    return integers;
}

Data dataOf(std::string_view text) {
    return {text.begin(), text.end()};
}

std::string_view textOf(const Data& data) {
    return {reinterpret_cast<const char*>(data.data()), data.size()};
}

}  // namespace platform
