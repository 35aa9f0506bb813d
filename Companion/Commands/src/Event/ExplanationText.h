#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Explanation/EventExplanation.h>
#include <string>
#include <vector>

namespace hbr {

/// One full explanation: whether the event is listed, what would change that, what each rule decided.
std::string explanationText(CommandContext& context, const EventExplanation& explanation);

/// Everything that is not listed, with its causes; past events are grouped at the end.
std::string explanationsText(CommandContext& context, const std::vector<EventExplanation>& explanations);

/// The first cause that no command can change, else the first cause. There must be a cause.
RuleVerdict mainCause(const EventExplanation& explanation);

}  // namespace hbr
