#pragma once

#include <CalendarStore/Account.h>
#include <Foundation/CollectionDiscovery.h>

namespace platform {

struct FoundAccount : FoundLocation {
    Account account;
};

inline FoundAccount discover(const Account& account, DiagnosticsSink& diagnostics) {
    return {discoverCollections(account.location, ".ics", account.name, diagnostics), account};
}

}  // namespace platform
