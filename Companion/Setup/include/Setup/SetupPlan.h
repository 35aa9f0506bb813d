#pragma once

#include <CalendarStore/Account.h>
#include <Session/CommandContext.h>
#include <Session/ExitCode.h>
#include <Setup/AddressTally.h>
#include <Setup/ContactAddition.h>
#include <Setup/LocationCandidate.h>
#include <Setup/LocationExamination.h>

#include <string>
#include <vector>

namespace hbr {

/// An account that setup would add, or an existing one that it found.
struct PlannedAccount {
    platform::Account account = {};
    std::vector<std::string> knownFrom = {};
    bool needsConsent = false;
    bool isThere = false;
    /// Candidates for the user's addresses; empty for contacts and where the addresses are known.
    std::vector<AddressCandidate> candidates = {};
    /// What it contains; only the one for its kind of contents is set.
    LocationExamination calendars = {};
    ContactsExamination contacts = {};

    bool holdsContacts() const { return account.contents == platform::Account::Contents::contacts; }
    /// "2 calendars, 31 events" or "52 contacts".
    std::string counts(const platform::Environment& environment) const;
    /// Items, cards and files that were skipped.
    std::size_t skipped() const;
};

struct SetupPlan {
    /// Existing accounts and accounts to add.
    std::vector<PlannedAccount> accounts = {};
    /// Why a location cannot be an account, one line each.
    std::vector<CommandFailure> refusals = {};

    std::size_t countOfNew() const;
};

/// Examines the candidates, distinguishes calendars from contacts by content, and decides which accounts to
/// add. A folder is added once however it is reached, and not at all if an account already reads it. Writes
/// nothing.
SetupPlan planSetup(CommandContext& context, const std::vector<LocationCandidate>& candidates);

}  // namespace hbr
