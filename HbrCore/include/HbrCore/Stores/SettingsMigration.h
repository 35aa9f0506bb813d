#pragma once

#include <HbrUtils/DefaultsDomains.h>
#include <System/Diagnostics.h>

#include <string_view>

namespace hbr {

/// Set in the standard domain once its settings were copied to the shared one.
inline constexpr std::string_view didMigrateToSharedDefaultsKey = "didMigrateToSharedDefaults";

/// Copies the standard domain's settings into the shared one unless the marker is set, then converts the
/// obsolete "timeOffset" (minutes), both under the locks of both domains. Minutes that do not fit stay
/// where they are, with a diagnostic.
void migrateSettings(const DefaultsDomains& domains, platform::DiagnosticsSink& diagnostics);

/// Sets the marker on a new installation, or where the old settings could not be read: there is nothing to
/// copy, and a shared domain that came from a backup must not be emptied. Before the first settings store.
void markMigratedWithoutOldSettings(const DefaultsDomains& domains);

}  // namespace hbr
