#pragma once

#include <HbrCore/RawValue.h>
#include <HbrUtils/JsonCoding.h>
#include <Values/Uuid.h>

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace hbr {

/// A rule by which the user leaves events out. A value.
struct FilterRule {
    enum class Field { title, notes, location, date };
    enum class FieldType { string, date };
    enum class ComparisonOperation { contains, beginsWith, endsWith, equals, matches, isOnDayOfWeek };

    static constexpr std::array allFields = {Field::title, Field::notes, Field::location, Field::date};
    static constexpr std::array allComparisonOperations = {
        ComparisonOperation::contains, ComparisonOperation::beginsWith, ComparisonOperation::endsWith,
        ComparisonOperation::equals,   ComparisonOperation::matches,    ComparisonOperation::isOnDayOfWeek};

    platform::Uuid id;
    Field field = Field::title;
    ComparisonOperation comparison = ComparisonOperation::contains;
    /// The text, wildcard pattern ("?" and "*") or comma-separated weekdays (1 Sunday to 7 Saturday).
    std::string value;
    bool isCaseSensitive = true;

    /// A fresh id, title, contains, empty value, letter case matters.
    static FilterRule makeDefault();

    friend bool operator==(const FilterRule&, const FilterRule&) = default;
};

std::string_view rawValue(FilterRule::Field field);
std::string_view rawValue(FilterRule::ComparisonOperation comparison);
template <>
std::optional<FilterRule::Field> fromRawValue<FilterRule::Field>(std::string_view text);
template <>
std::optional<FilterRule::ComparisonOperation> fromRawValue<FilterRule::ComparisonOperation>(
    std::string_view text);

FilterRule::FieldType fieldType(FilterRule::Field field);
std::span<const FilterRule::ComparisonOperation> allowedComparisonOperations(FilterRule::Field field);
FilterRule::ComparisonOperation defaultComparisonOperation(FilterRule::Field field);

/// A missing or unknown key but "isCaseSensitive", which then is true, makes the record unreadable.
template <>
struct JsonCoding<FilterRule> {
    static platform::JsonValue encode(const FilterRule& rule);
    static FilterRule decode(const platform::JsonValue& json);
};

}  // namespace hbr

template <>
struct std::hash<hbr::FilterRule> {
    std::size_t operator()(const hbr::FilterRule& rule) const noexcept;
};
