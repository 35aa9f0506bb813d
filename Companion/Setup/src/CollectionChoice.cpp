#include <Setup/CollectionChoice.h>

#include <Session/ExitCode.h>
#include <Words/CompanionText.h>
#include <Words/NameProposal.h>

namespace hbr {

namespace {

template <class Matches>
std::vector<const CollectionChoice*> matching(const std::vector<CollectionChoice>& choices, Matches matches) {
    std::vector<const CollectionChoice*> found;
    for (const auto& choice : choices) {
        if (matches(choice)) found.push_back(&choice);
    }
    return found;
}

}  // namespace

const CollectionChoice& chosen(const std::vector<CollectionChoice>& choices, const std::string& wanted,
                               const platform::Environment& environment, std::string_view keys) {
    const auto text = [&](const char* key) {
        return companionText(environment, std::string(keys) + key, {wanted});
    };
    auto found = matching(choices, [&](const auto& one) { return one.identifier == wanted; });
    if (found.empty()) found = matching(choices, [&](const auto& one) { return one.name == wanted; });
    if (found.empty()) {
        found = matching(choices, [&](const auto& one) { return one.qualifiedName() == wanted; });
    }
    if (found.size() == 1) return *found.front();
    if (found.empty()) {
        std::vector<std::string> names;
        for (const auto& choice : choices)
            names.push_back(choice.name);
        throw CommandFailure(ExitCode::nothingThere,
                             text(".unknown") + nameProposal(environment, wanted, names));
    }
    std::string list;
    for (const auto* choice : found) {
        list += "\n  " + choice->qualifiedName() + "  (" + choice->identifier + ")";
    }
    throw CommandFailure(ExitCode::nothingThere, text(".several") + list);
}

}  // namespace hbr
