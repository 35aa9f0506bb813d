#pragma once

#include <Session/CommandContext.h>
#include <Setup/SetupPlan.h>

namespace hbr {

/// How the proposals of a setup are answered.
enum class SetupAnswers {
    /// Ask the user.
    asked,
    /// Take every proposal that is sure.
    taken,
    /// Take nothing.
    none,
};

/// Shows on standard error what was found and asks which of it to add. Everything not chosen is removed from
/// the plan; without a question that is what needs consent. False: nothing was chosen.
bool chooseAccounts(const CommandContext& context, SetupPlan& plan, SetupAnswers answers);

/// Asks which of the candidate addresses are the user's, adds them to the planned accounts and removes the
/// other candidates.
void chooseAddresses(const CommandContext& context, SetupPlan& plan, SetupAnswers answers);

}  // namespace hbr
