#pragma once

#include <CalendarStore/EKEnums.h>
#include <Session/CommandContext.h>
#include <Setup/CollectionChoice.h>

namespace hbr {

/// Every calendar or task list that can be watched, with its state.
std::vector<CollectionChoice> collectionChoices(CommandContext& context, platform::EKEntityType type);

/// Starts or stops watching and records that the user decided about them. Keeps changes that other programs
/// make at the same time. Throws when the settings cannot be written.
void setActive(CommandContext& context, platform::EKEntityType type,
               const std::vector<std::string>& identifiers, bool active);

}  // namespace hbr
