#pragma once

#include <System/Environment.h>
#include <Values/PropertyValue.h>

#include <filesystem>

namespace platform {

/// A folder of resources that says of itself what it is in "Info.plist" (a property list). Immutable.
class Bundle {
  public:
    explicit Bundle(const std::filesystem::path& folder);
    /// The program's own: the first of the environment's resource directories that has an "Info.plist".
    static Bundle main(const Environment& environment);

    /// Empty when the file is missing or not a dictionary.
    const PropertyDictionary& infoDictionary() const { return infoDictionary_; }

  private:
    PropertyDictionary infoDictionary_;
};

}  // namespace platform
