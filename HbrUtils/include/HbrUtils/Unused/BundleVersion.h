#pragma once

#include <System/Bundle.h>

#include <optional>
#include <string>

// From the information dictionary; nothing where it has no such text.
namespace hbr {

/// "CFBundleVersion": the build.
std::optional<std::string> bundleVersionString(const platform::Bundle& bundle);
/// "CFBundleShortVersionString": the release, as users know it.
std::optional<std::string> shortVersionString(const platform::Bundle& bundle);

}  // namespace hbr
