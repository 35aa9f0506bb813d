#pragma once

#include <Session/CommandContext.h>

#include <string>

namespace hbr {

/// Gives the account another name. Calendar identifiers are derived from the name, so everything stored under
/// them is moved: what is watched, what the user has decided about, the last setup, and the settings of
/// single events of watched calendars. Throws when the new name is taken or nothing can be written.
void renameAccount(CommandContext& context, const std::string& name, const std::string& newName);

}  // namespace hbr
