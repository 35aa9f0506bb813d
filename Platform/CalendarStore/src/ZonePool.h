#pragma once

#include "ZoneDefinition.h"

#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>

namespace platform {

/// Keeps one of all definitions that say the same word for word: servers write theirs into every file. Safe
/// from any thread.
class ZonePool {
  public:
    ZoneDefinitionRef shared(ZoneDefinition definition);
    /// Releases the definitions that no file uses any more.
    void forgetUnused();

  private:
    std::mutex mutex_;
    /// By the text of the definition itself.
    std::unordered_map<std::string_view, ZoneDefinitionRef> definitions_;
};

}  // namespace platform
