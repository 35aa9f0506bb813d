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

/// An account that a setup would add, or one that it came upon.
struct PlannedAccount {
    platform::Account account = {};
    std::vector<std::string> knownFrom = {};
    bool needsConsent = false;
    bool isThere = false;
    /// Whose it may be; empty for contacts, and where the addresses are known.
    std::vector<AddressCandidate> candidates = {};
    /// What it holds: of the two the one that fits its contents.
    LocationExamination calendars = {};
    ContactsExamination contacts = {};

    bool holdsContacts() const { return account.contents == platform::Account::Contents::contacts; }
    /// "2 calendars, 31 events" or "52 contacts".
    std::string counts(const platform::Environment& environment) const;
    /// Items, cards and files that were passed over.
    std::size_t skipped() const;
};

struct SetupPlan {
    /// Those that are there already and those to add.
    std::vector<PlannedAccount> accounts = {};
    /// Why a location is no account.
    std::vector<CommandFailure> refusals = {};

    std::size_t countOfNew() const;
};

/// What the candidates hold, calendars and contacts told apart by content, and which accounts follow: every
/// folder once, by whichever ways it is reached, and nothing twice that an account reads already. Writes
/// nothing.
SetupPlan planSetup(CommandContext& context, const std::vector<LocationCandidate>& candidates);

}  // namespace hbr
