#include <Values/JsonValue.h>

#include <Values/PropertyValue.h>

#include <algorithm>
#include <cmath>

namespace platform {

std::optional<std::int64_t> JsonValue::asInteger() const {
    if (auto* value = std::get_if<std::int64_t>(&storage_)) return *value;
    if (auto* value = std::get_if<double>(&storage_)) return PropertyValue(*value).asInteger();
    return std::nullopt;
}

std::optional<double> JsonValue::asDouble() const {
    if (auto* value = std::get_if<double>(&storage_)) return *value;
    if (auto* value = std::get_if<std::int64_t>(&storage_)) return static_cast<double>(*value);
    return std::nullopt;
}

const JsonValue* JsonValue::find(std::string_view key) const {
    const Object* object = asObject();
    if (!object) return nullptr;
    auto member = std::ranges::find(*object, key, &Object::value_type::first);
    return member == object->end() ? nullptr : &member->second;
}

JsonValue& JsonValue::set(std::string_view key, JsonValue value) {
    if (isNull()) storage_ = Object{};
    auto& object = std::get<Object>(storage_);
    auto member = std::ranges::find(object, key, &Object::value_type::first);
    if (member == object.end()) {
        object.emplace_back(std::string(key), std::move(value));
    } else {
        member->second = std::move(value);
    }
    return *this;
}

void JsonValue::append(JsonValue value) {
    if (isNull()) storage_ = Array{};
    std::get<Array>(storage_).push_back(std::move(value));
}

}  // namespace platform
