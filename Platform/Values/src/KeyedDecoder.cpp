#include <Values/JsonValue.h>
#include <Values/KeyedDecoder.h>

namespace platform {
namespace {

[[noreturn]] void failed(std::string_view key, std::string_view reason) {
    throw DecodingError("\"" + std::string(key) + "\" " + std::string(reason));
}

template <class T>
T required(std::string_view key, const std::optional<T>& value, std::string_view kind) {
    if (!value) failed(key, "is not " + std::string(kind));
    return *value;
}

}  // namespace

KeyedDecoder::KeyedDecoder(const JsonValue& record) : record_(record) {
    if (!record.asObject()) throw DecodingError("the record is not an object");
}

const JsonValue& KeyedDecoder::value(std::string_view key) const {
    const JsonValue* found = record_.find(key);
    if (!found) failed(key, "is missing");
    return *found;
}

std::string KeyedDecoder::string(std::string_view key) const {
    const std::string* text = value(key).asString();
    if (!text) failed(key, "is not a text");
    return *text;
}

std::int64_t KeyedDecoder::integer(std::string_view key) const {
    return required(key, value(key).asInteger(), "a whole number");
}

double KeyedDecoder::number(std::string_view key) const {
    return required(key, value(key).asDouble(), "a number");
}

bool KeyedDecoder::boolean(std::string_view key) const {
    const bool* found = value(key).asBool();
    if (!found) failed(key, "is not true or false");
    return *found;
}

std::optional<std::string> KeyedDecoder::optionalString(std::string_view key) const {
    const JsonValue* found = record_.find(key);
    if (!found || found->isNull()) return std::nullopt;
    return string(key);
}

}  // namespace platform
