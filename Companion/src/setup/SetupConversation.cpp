#include "SetupConversation.h"

#include "PathExpansion.h"

#include <Foundation/ContentLine.h>
#include <Foundation/Text.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>

namespace hbr {

namespace {

using Numbers = std::set<std::size_t>;

/// Numbers from 1 to `count`, between blanks or commas; nothing when anything else stands there.
std::optional<Numbers> numbersOf(std::string text, std::size_t count) {
    std::ranges::replace(text, ',', ' ');
    Numbers numbers;
    for (const auto& word : platform::words(text)) {
        std::size_t number = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        if (error != std::errc() || end != word.data() + word.size() || number < 1 || number > count) {
            return std::nullopt;
        }
        numbers.insert(number);
    }
    return numbers;
}

std::string listed(const Numbers& numbers) {
    std::string text;
    for (const auto number : numbers)
        text += (text.empty() ? "" : ", ") + std::to_string(number);
    return text;
}

/// Asks until the answer is understood: the proposed numbers for an empty one, none for "n".
Numbers askForNumbers(const Console& console, const std::string& question, std::size_t count,
                      const Numbers& proposed) {
    const std::string choices = count == 1         ? (proposed.empty() ? " [y/N]" : " [Y/n]")
                                : proposed.empty() ? " [numbers, else none]"
                                                   : " [Y/n, or numbers]";
    while (true) {
        const auto typed = console.ask(question + choices);
        if (!typed) return {};
        const std::string answer = platform::lowercased(*typed);
        if (answer.empty()) return proposed;
        if (answer == "n" || answer == "no") return {};
        if (answer == "y" || answer == "yes") return proposed.empty() && count == 1 ? Numbers{1} : proposed;
        if (auto numbers = numbersOf(answer, count)) return *numbers;
    }
}

std::string knownFromText(const PlannedAccount& one) {
    std::string programs;
    for (const auto& program : one.knownFrom)
        programs += (programs.empty() ? "" : ", ") + program;
    return programs.empty() ? "" : "  (" + onOneLine(programs) + ")";
}

/// The new accounts as a numbered list on standard error.
void show(const CommandContext& context, const std::vector<PlannedAccount*>& found) {
    const Console& console = context.console();
    const auto& home = context.environment()->homeDirectory;
    std::size_t width = 0;
    for (const auto* one : found)
        width = std::max(width, columns(onOneLine(withTilde(one->account.location, home))));
    console.err() << "Found:\n";
    std::size_t number = 0;
    for (const auto* one : found) {
        console.err() << "  " << padded(std::to_string(++number), 2) << " "
                      << padded(onOneLine(withTilde(one->account.location, home)), width) << "  "
                      << one->counts() << knownFromText(*one) << "\n";
    }
}

void keep(SetupPlan& plan, const std::vector<PlannedAccount*>& found, const Numbers& chosen) {
    std::set<std::string> unwanted;
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (!chosen.contains(i + 1)) unwanted.insert(found[i]->account.name);
    }
    std::erase_if(plan.accounts, [&](const PlannedAccount& one) {
        return !one.isThere && unwanted.contains(one.account.name);
    });
}

bool isAmong(const std::vector<std::string>& addresses, const std::string& address) {
    return std::ranges::any_of(addresses,
                               [&](const auto& one) { return platform::equalIgnoringCase(one, address); });
}

std::vector<AddressCandidate> allCandidates(const SetupPlan& plan) {
    std::vector<AddressCandidate> all;
    for (const auto& one : plan.accounts) {
        for (const auto& candidate : one.candidates)
            addCandidate(all, candidate);
    }
    return all;
}

/// A few suffice: who takes part in less is hardly the user.
constexpr std::size_t mostShown = 9;

std::vector<std::string> askForAddresses(const Console& console, std::vector<AddressCandidate> candidates) {
    if (candidates.size() > mostShown) candidates.resize(mostShown);
    Numbers proposed;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (candidates[i].isSure) proposed.insert(i + 1);
    }
    std::string question = "Is " + onOneLine(candidates.front().address) + " your address (" +
                           shareText(candidates.front()) + ")?";
    // Who takes part in all of them is more likely the user than anybody else.
    const bool isFirstLikely =
        candidates.size() == 1 || (candidates[0].meetings == candidates[0].allMeetings &&
                                   candidates[0].meetings > candidates[1].meetings);
    if (proposed.empty() && isFirstLikely) proposed = {1};
    if (candidates.size() > 1) {
        console.err() << "Which of these addresses are yours? It tells which answers are.\n";
        std::size_t number = 0;
        for (const auto& candidate : candidates) {
            console.err() << "  " << ++number << "  " << onOneLine(candidate.address) << "  "
                          << shareText(candidate) << "\n";
        }
        question = proposed.empty() ? "Yours:" : "Yours: " + listed(proposed) + "?";
    }
    std::vector<std::string> chosen;
    for (const auto number : askForNumbers(console, question, candidates.size(), proposed))
        chosen.push_back(candidates[number - 1].address);
    return chosen;
}

}  // namespace

bool chooseAccounts(const CommandContext& context, SetupPlan& plan, SetupAnswers answers) {
    std::vector<PlannedAccount*> found;
    Numbers proposed;
    for (auto& one : plan.accounts) {
        if (one.isThere) continue;
        found.push_back(&one);
        if (!one.needsConsent) proposed.insert(found.size());
    }
    if (found.empty()) return false;
    show(context, found);
    Numbers chosen;
    if (answers == SetupAnswers::taken) chosen = proposed;
    if (answers == SetupAnswers::asked) {
        const std::string which =
            proposed.size() == found.size() ? (found.size() == 1 ? "it" : "all of them") : listed(proposed);
        const std::string question = proposed.empty() ? "Add which of them?" : "Add " + which + "?";
        chosen = askForNumbers(context.console(), question, found.size(), proposed);
    }
    for (std::size_t i = 0; answers == SetupAnswers::taken && i < found.size(); ++i) {
        if (chosen.contains(i + 1)) continue;
        context.console().err() << "Left out, as it may be no calendar to keep; to add it: heedbanner setup "
                                << onOneLine(found[i]->account.location.string()) << "\n";
    }
    keep(plan, found, chosen);
    return !chosen.empty();
}

void chooseAddresses(const CommandContext& context, SetupPlan& plan, SetupAnswers answers) {
    const auto candidates = allCandidates(plan);
    std::vector<std::string> chosen;
    if (answers == SetupAnswers::asked && !candidates.empty()) {
        chosen = askForAddresses(context.console(), candidates);
    }
    for (auto& one : plan.accounts) {
        std::erase_if(one.candidates, [&](const AddressCandidate& candidate) {
            return answers == SetupAnswers::taken ? !candidate.isSure : !isAmong(chosen, candidate.address);
        });
        for (const auto& candidate : one.candidates)
            one.account.addresses.push_back(candidate.address);
    }
}

}  // namespace hbr
