#pragma once

#include <CalendarStore/Account.h>
#include <Foundation/CollectionDiscovery.h>

namespace platform {

struct FoundAccount : FoundLocation {
    Account account;
};

/// Says only whether the account can be read; its folders are not looked through.
inline FoundAccount reach(const Account& account, DiagnosticsSink& diagnostics) {
    FoundAccount found;
    found.account = account;
    found.problem = locationProblem(account.location);
    found.readable = found.problem.empty();
    if (!found.readable)
        diagnostics.report({.file = account.location, .field = account.name, .text = found.problem});
    return found;
}

inline FoundAccount discover(const Account& account, DiagnosticsSink& diagnostics) {
    return {discoverCollections(account.location, ".ics", account.name, diagnostics), account};
}

}  // namespace platform
