#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/FilterRule.h>
#include <string>
#include <vector>

namespace hbr {

/// "title contains "lunch", letter case matters", in the user's language.
std::string ruleText(const FilterRule& rule, const platform::Environment& environment);

/// A rule from the words FIELD [COMPARISON] VALUE …: raw values or display names. A field with one comparison
/// needs none; days of the week are numbers (1 Sunday to 7 Saturday) or names. Throws CommandFailure
/// (wrongUsage) with what is wrong and what is possible.
FilterRule typedRule(const std::vector<std::string>& words, bool isCaseSensitive,
                     const platform::Environment& environment);

/// Whether the word is the name of a field.
bool isFieldName(const std::string& word);

/// The stored rule with this number in the list, this id or a beginning of it. Throws CommandFailure
/// (nothingThere).
FilterRule chosenRule(const std::string& wanted, const std::vector<FilterRule>& rules,
                      const platform::Environment& environment);

}  // namespace hbr
