#pragma once

#include <HbrUtils/PropertyCoding.h>

#include <cstdint>
#include <string_view>
#include <utility>

namespace hbr {

/// Which values a setting takes. For numbers both bounds are valid.
struct SettingKind {
    enum class Form { boolean, seconds, days, minutes, identifiers, listOfMinutes, rules };

    Form form = Form::boolean;
    std::int64_t first = 0;
    std::int64_t last = 0;

    constexpr bool contains(std::int64_t number) const { return number >= first && number <= last; }
};

/// What is known of a setting apart from its type.
struct SettingFacts {
    /// The property's name, which is also what users type.
    std::string_view name;
    SettingKind kind;
    /// Where it is stored: in the shared domain, or in the standard one.
    std::string_view key;
    bool isShared = true;
};

/// One setting with the type of its value and its default. Coding: how the value is stored.
template <class T, class Coding = PropertyCoding<T>>
struct Setting : SettingFacts {
    T defaultValue;

    /// Stored in the shared domain under its own name.
    constexpr Setting(std::string_view name_, T value, SettingKind kind_)
        : SettingFacts{name_, kind_, name_}, defaultValue(std::move(value)) {}
    constexpr Setting storedAs(std::string_view otherKey) const {
        Setting other = *this;
        other.key = otherKey;
        return other;
    }
    constexpr Setting inStandardDomain() const {
        Setting other = *this;
        other.isShared = false;
        return other;
    }
};

}  // namespace hbr
