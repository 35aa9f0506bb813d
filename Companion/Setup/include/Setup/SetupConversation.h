#pragma once

#include <Session/CommandContext.h>
#include <Setup/SetupPlan.h>

namespace hbr {

/// How the proposals of a setup are answered.
enum class SetupAnswers {
    /// A person is asked.
    asked,
    /// Whatever is sure is taken.
    taken,
    /// Nothing is taken.
    none,
};

/// Shows on standard error what was found and lets choose what of it becomes an account. What is not chosen
/// leaves the plan; with answers "taken" that is what needs consent. False: nothing was chosen.
bool chooseAccounts(const CommandContext& context, SetupPlan& plan, SetupAnswers answers);

/// Gives the accounts to add the addresses that are the user's among their candidates, and leaves of the
/// candidates only these.
void chooseAddresses(const CommandContext& context, SetupPlan& plan, SetupAnswers answers);

}  // namespace hbr
