#pragma once

#include <HbrCore/ConferenceLinks/VideoConferenceService.h>
#include <System/Environment.h>
#include <TimeAndText/Url.h>
#include <Values/PropertyValue.h>

#include <optional>
#include <vector>

// Further services come from ConferenceServices.plist in the environment's data directory: a property list
// (XML or binary) that is an array of dictionaries with the keys "id", "regex", "name" (texts) and
// "supportsNativeApp" (boolean), all required. The user may edit it; it is never replaced. Problems are
// logged under "ConferenceLinks" and reported as diagnostics, and leave the built-in services in force.
namespace hbr {

inline constexpr const char* servicesFileName = "ConferenceServices.plist";

/// Nothing without a data directory.
std::optional<platform::Url> configFileUrl(const platform::Environment& environment);
/// Copies the shipped file into place when there is none; two processes never leave a torn file.
void copyConfigFileIfNeeded(const platform::Environment& environment);
/// Services of the shipped file that the user's copy does not know by their identifier: what an update
/// brought or what the user took out. Nothing when one of the two cannot be read.
std::vector<VideoConferenceService> servicesMissingFromCopy(const platform::Environment& environment);
/// Appends the file's services in file order; all or none.
void loadConfigFile(const platform::Environment& environment, std::vector<VideoConferenceService>& services);

platform::PropertyValue encodeServices(const std::vector<VideoConferenceService>& services);
/// Throws std::runtime_error that names the entry and the key.
std::vector<VideoConferenceService> decodeServices(const platform::PropertyValue& list);

}  // namespace hbr
