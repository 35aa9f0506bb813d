#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Explanation/EventExplanation.h>
#include <string>
#include <vector>

namespace hbr {

/// One explanation in full: whether it is listed, what would change that, what each rule decided.
std::string explanationText(CommandContext& context, const EventExplanation& explanation);

/// What is not listed, item after item with its causes; what is merely over stands together at the end.
std::string explanationsText(CommandContext& context, const std::vector<EventExplanation>& explanations);

/// The first cause that no command changes, else the first; the explanation must have one.
RuleVerdict mainCause(const EventExplanation& explanation);

}  // namespace hbr
