#include "ZonePool.h"

#include <utility>

namespace platform {

ZoneDefinitionRef ZonePool::shared(ZoneDefinition definition) {
    std::lock_guard lock(mutex_);
    if (const auto known = definitions_.find(definition.text); known != definitions_.end())
        return known->second;
    auto kept = std::make_shared<const ZoneDefinition>(std::move(definition));
    definitions_.emplace(kept->text, kept);
    return kept;
}

void ZonePool::forgetUnused() {
    std::lock_guard lock(mutex_);
    std::erase_if(definitions_, [](const auto& entry) { return entry.second.use_count() == 1; });
}

}  // namespace platform
