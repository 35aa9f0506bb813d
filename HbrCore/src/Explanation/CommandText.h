#pragma once

#include <HbrCore/Stores/SettingsTable.h>

#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// "heedbanner WORD …" as one would type it into a shell, words quoted where they need it.
std::string commandText(const std::vector<std::string>& words);
/// The command that gives the setting this value.
std::string settingCommand(const SettingFacts& setting, std::string value);

}  // namespace hbr
