#include <Words/NameProposal.h>

#include <TimeAndText/NearestName.h>
#include <Words/CompanionText.h>

namespace hbr {

std::string nameProposal(const platform::Environment& environment, std::string_view word,
                         const std::vector<std::string>& candidates) {
    const auto nearest = platform::nearestName(word, candidates);
    return nearest ? " " + companionText(environment, "Choice.didYouMean", {*nearest}) : "";
}

}  // namespace hbr
