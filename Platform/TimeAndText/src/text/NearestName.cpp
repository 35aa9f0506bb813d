#include <TimeAndText/NearestName.h>
#include <TimeAndText/Text.h>

#include <algorithm>

namespace platform {

namespace {

/// Optimal string alignment distance over bytes.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> rows(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i)
        rows[i][0] = i;
    for (std::size_t j = 0; j <= b.size(); ++j)
        rows[0][j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t change = rows[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            rows[i][j] = std::min({rows[i - 1][j] + 1, rows[i][j - 1] + 1, change});
            const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (swapped) rows[i][j] = std::min(rows[i][j], rows[i - 2][j - 2] + 1);
        }
    }
    return rows[a.size()][b.size()];
}

}  // namespace

std::optional<std::string> nearestName(std::string_view word, const std::vector<std::string>& candidates) {
    constexpr std::size_t longestWord = 100;
    if (word.empty() || word.size() > longestWord) return std::nullopt;
    const std::string wanted = lowercased(word);
    const std::string* best = nullptr;
    std::size_t bestDistance = std::max<std::size_t>(2, word.size() / 3) + 1;
    for (const auto& candidate : candidates) {
        if (candidate.size() > longestWord) continue;
        const std::string name = lowercased(candidate);
        const bool isBeginning = wanted.size() >= 2 && name.starts_with(wanted);
        const std::size_t steps = isBeginning ? 1 : distance(wanted, name);
        if (steps >= bestDistance || steps >= std::max(wanted.size(), name.size())) continue;
        bestDistance = steps;
        best = &candidate;
    }
    return best ? std::optional(*best) : std::nullopt;
}

std::string proposal(std::string_view word, const std::vector<std::string>& candidates) {
    const auto nearest = nearestName(word, candidates);
    return nearest ? " (did you mean \"" + *nearest + "\"?)" : "";
}

}  // namespace platform
