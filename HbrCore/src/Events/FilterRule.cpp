#include <HbrCore/Events/FilterRule.h>

#include <utility>

namespace hbr {

using platform::DecodingError;
using platform::JsonValue;
using Comparison = FilterRule::ComparisonOperation;

namespace {

constexpr std::array<std::string_view, 4> fieldTexts = {"title", "notes", "location", "date"};
constexpr std::array<std::string_view, 6> comparisonTexts = {"contains", "beginsWith", "endsWith",
                                                             "equals",   "matches",    "isOnDayOfWeek"};
constexpr std::array textComparisons = {Comparison::contains, Comparison::beginsWith, Comparison::endsWith,
                                        Comparison::equals, Comparison::matches};
constexpr std::array dateComparisons = {Comparison::isOnDayOfWeek};

template <class T>
T decodeCase(const platform::KeyedDecoder& record, std::string_view key) {
    const auto value = fromRawValue<T>(record.string(key));
    if (!value) throw DecodingError(std::string(key) + ": unknown value");
    return *value;
}

}  // namespace

FilterRule FilterRule::makeDefault() {
    return {.id = platform::Uuid::random(), .value = {}};
}

std::string_view rawValue(FilterRule::Field field) {
    return fieldTexts[static_cast<std::size_t>(field)];
}

std::string_view rawValue(Comparison comparison) {
    return comparisonTexts[static_cast<std::size_t>(comparison)];
}

template <>
std::optional<FilterRule::Field> fromRawValue<FilterRule::Field>(std::string_view text) {
    for (auto field : FilterRule::allFields) {
        if (rawValue(field) == text) return field;
    }
    return std::nullopt;
}

template <>
std::optional<Comparison> fromRawValue<Comparison>(std::string_view text) {
    for (auto comparison : FilterRule::allComparisonOperations) {
        if (rawValue(comparison) == text) return comparison;
    }
    return std::nullopt;
}

FilterRule::FieldType fieldType(FilterRule::Field field) {
    return field == FilterRule::Field::date ? FilterRule::FieldType::date : FilterRule::FieldType::string;
}

std::span<const Comparison> allowedComparisonOperations(FilterRule::Field field) {
    if (fieldType(field) == FilterRule::FieldType::date) return dateComparisons;
    return textComparisons;
}

Comparison defaultComparisonOperation(FilterRule::Field field) {
    return allowedComparisonOperations(field).front();
}

JsonValue JsonCoding<FilterRule>::encode(const FilterRule& rule) {
    JsonValue record = JsonValue::object();
    record.set("id", rule.id.uuidString())
        .set("field", rawValue(rule.field))
        .set("comparison", rawValue(rule.comparison))
        .set("value", rule.value)
        .set("isCaseSensitive", rule.isCaseSensitive);
    return record;
}

FilterRule JsonCoding<FilterRule>::decode(const JsonValue& json) {
    const platform::KeyedDecoder record(json);
    const auto id = platform::Uuid::parse(record.string("id"));
    if (!id) throw DecodingError("id: no UUID");
    FilterRule rule{.id = *id,
                    .field = decodeCase<FilterRule::Field>(record, "field"),
                    .comparison = decodeCase<Comparison>(record, "comparison"),
                    .value = record.string("value")};
    const JsonValue* caseSensitive = record.find("isCaseSensitive");
    if (const bool* flag = caseSensitive ? caseSensitive->asBool() : nullptr) rule.isCaseSensitive = *flag;
    return rule;
}

}  // namespace hbr

std::size_t std::hash<hbr::FilterRule>::operator()(const hbr::FilterRule& rule) const noexcept {
    std::size_t result = std::hash<std::string>{}(rule.id.uuidString());
    auto combine = [&](std::size_t part) { result = result * 31 + part; };
    combine(static_cast<std::size_t>(rule.field));
    combine(static_cast<std::size_t>(rule.comparison));
    combine(std::hash<std::string>{}(rule.value));
    combine(rule.isCaseSensitive ? 1 : 0);
    return result;
}
