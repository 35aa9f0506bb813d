#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/FilterRule.h>
#include <string>
#include <vector>

namespace hbr {

/// "title contains "lunch", letter case matters", in the product's words.
std::string ruleText(const FilterRule& rule, const platform::Environment& environment);

/// A rule from the words FIELD [COMPARISON] VALUE …: raw values or display names; a field with one
/// comparison needs none; days of the week as numbers (1 Sunday to 7 Saturday) or names. Throws
/// CommandFailure (wrong usage) that names what is wrong and what there is.
FilterRule typedRule(const std::vector<std::string>& words, bool isCaseSensitive,
                     const platform::Environment& environment);

/// Whether the word names a field.
bool isFieldName(const std::string& word);

/// The stored rule meant by its number in the list, its id or a beginning of it. Throws CommandFailure
/// (nothing there to act on).
FilterRule chosenRule(const std::string& wanted, const std::vector<FilterRule>& rules,
                      const platform::Environment& environment);

}  // namespace hbr
