#pragma once

#include <Session/CommandContext.h>

#include <string>

namespace hbr {

/// Gives the account another name. Calendar identifiers come from it, so everything that is stored under
/// them (what is watched, what the user has decided about, the last setup, settings of single events of
/// watched calendars) moves along. Throws when the new name is taken or nothing can be written.
void renameAccount(CommandContext& context, const std::string& name, const std::string& newName);

}  // namespace hbr
