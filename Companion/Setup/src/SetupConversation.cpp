#include <Setup/SetupConversation.h>

#include <CalendarFiles/ContentLine.h>
#include <Setup/PathExpansion.h>
#include <TimeAndText/Text.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>
#include <Words/TextColumns.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>

namespace hbr {

namespace {

using Numbers = std::set<std::size_t>;

/// Numbers from 1 to `count`, separated by blanks or commas; nothing when there is anything else.
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

/// "y" and "yes" are understood in every language.
bool isWord(const platform::Environment& environment, const char* key, const std::string& english,
            const std::string& answer) {
    if (answer == english || answer == english.substr(0, 1)) return true;
    const std::string words = companionText(environment, key);
    return std::ranges::any_of(platform::words(words), [&](const auto& word) { return answer == word; });
}

/// Asks until the answer is understood: an empty one means the proposed numbers, "n" none.
Numbers askForNumbers(const CommandContext& context, const std::string& question, std::size_t count,
                      const Numbers& proposed) {
    const platform::Environment& environment = *context.environment();
    const char* choices = count == 1         ? (proposed.empty() ? "Setup.choice.no" : "Setup.choice.yes")
                          : proposed.empty() ? "Setup.choice.numbers"
                                             : "Setup.choice.yesOrNumbers";
    const std::string prompt = question + " " + companionText(environment, choices);
    while (true) {
        const auto typed = context.console().ask(prompt);
        if (!typed) return {};
        const std::string answer = platform::lowercased(*typed);
        if (answer.empty()) return proposed;
        if (isWord(environment, "Setup.words.no", "no", answer)) return {};
        if (isWord(environment, "Setup.words.yes", "yes", answer))
            return proposed.empty() && count == 1 ? Numbers{1} : proposed;
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
    console.err() << companionText(*context.environment(), "Setup.found") << "\n";
    std::size_t number = 0;
    for (const auto* one : found) {
        console.err() << "  " << padded(std::to_string(++number), 2) << " "
                      << padded(onOneLine(withTilde(one->account.location, home)), width) << "  "
                      << one->counts(*context.environment()) << knownFromText(*one) << "\n";
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

/// A few are enough: the user takes part in most meetings.
constexpr std::size_t mostShown = 9;

std::vector<std::string> askForAddresses(const CommandContext& context,
                                         std::vector<AddressCandidate> candidates) {
    const Console& console = context.console();
    const platform::Environment& environment = *context.environment();
    if (candidates.size() > mostShown) candidates.resize(mostShown);
    Numbers proposed;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (candidates[i].isSure) proposed.insert(i + 1);
    }
    std::string question =
        companionText(environment, "Setup.isYours",
                      {onOneLine(candidates.front().address), shareText(environment, candidates.front())});
    // Someone who takes part in all of them is probably the user.
    const bool isFirstLikely =
        candidates.size() == 1 || (candidates[0].meetings == candidates[0].allMeetings &&
                                   candidates[0].meetings > candidates[1].meetings);
    if (proposed.empty() && isFirstLikely) proposed = {1};
    if (candidates.size() > 1) {
        console.err() << companionText(environment, "Setup.whichAreYours") << "\n";
        std::size_t number = 0;
        for (const auto& candidate : candidates) {
            console.err() << "  " << ++number << "  " << onOneLine(candidate.address) << "  "
                          << shareText(environment, candidate) << "\n";
        }
        question = proposed.empty() ? companionText(environment, "Setup.yours")
                                    : companionText(environment, "Setup.yoursProposed", {listed(proposed)});
    }
    std::vector<std::string> chosen;
    for (const auto number : askForNumbers(context, question, candidates.size(), proposed))
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
        const char* key = proposed.empty()                  ? "Setup.addWhich"
                          : proposed.size() != found.size() ? "Setup.addThese"
                          : found.size() == 1               ? "Setup.addOne"
                                                            : "Setup.addAll";
        const std::string question = companionText(*context.environment(), key, {listed(proposed)});
        chosen = askForNumbers(context, question, found.size(), proposed);
    }
    for (std::size_t i = 0; answers == SetupAnswers::taken && i < found.size(); ++i) {
        if (chosen.contains(i + 1)) continue;
        context.console().err() << companionText(*context.environment(), "Setup.leftOut")
                                << ": heedbanner setup " << onOneLine(found[i]->account.location.string())
                                << "\n";
    }
    keep(plan, found, chosen);
    return !chosen.empty();
}

void chooseAddresses(const CommandContext& context, SetupPlan& plan, SetupAnswers answers) {
    const auto candidates = allCandidates(plan);
    std::vector<std::string> chosen;
    if (answers == SetupAnswers::asked && !candidates.empty()) {
        chosen = askForAddresses(context, candidates);
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
