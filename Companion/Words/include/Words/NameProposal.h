#pragma once

#include <System/Environment.h>

#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// " (did you mean "NAME"?)" with the candidate nearest to the word; nothing when none is near.
std::string nameProposal(const platform::Environment& environment, std::string_view word,
                         const std::vector<std::string>& candidates);

}  // namespace hbr
