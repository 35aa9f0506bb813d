#include "StackDistribution.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace platform {

std::vector<double> gapsBefore(const std::vector<StackItem>& items, double spacing) {
    std::vector<double> gaps(items.size(), 0);
    for (std::size_t i = 1; i < items.size(); ++i) {
        if (!items[i].isSpacer && !items[i - 1].isSpacer) gaps[i] = spacing;
    }
    return gaps;
}

std::vector<double> distribute(const std::vector<StackItem>& items, double spacing,
                               std::optional<double> available) {
    std::vector<double> lengths(items.size(), 0);
    std::vector<std::size_t> order;
    std::size_t spacerCount = 0;
    double reserved = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].isSpacer) {
            lengths[i] = items[i].minimumLength;
            reserved += lengths[i];
            ++spacerCount;
        } else {
            order.push_back(i);
        }
    }
    if (!available) {
        for (const auto i : order)
            lengths[i] = items[i].lengthFor(std::nullopt);
        return lengths;
    }
    const auto gaps = gapsBefore(items, spacing);
    double left = *available - reserved - std::accumulate(gaps.begin(), gaps.end(), 0.0);
    std::vector<double> ideals(items.size(), 0);
    for (const auto i : order) {
        if (items[i].flexibility == Flexibility::compressible) ideals[i] = items[i].lengthFor(std::nullopt);
    }
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return std::pair(items[a].flexibility, ideals[a]) < std::pair(items[b].flexibility, ideals[b]);
    });
    auto unserved = static_cast<double>(order.size());
    for (const auto i : order) {
        lengths[i] = items[i].lengthFor(std::max(0.0, left / unserved));
        left -= lengths[i];
        unserved -= 1;
    }
    if (spacerCount > 0 && left > 0) {
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (items[i].isSpacer) lengths[i] += left / static_cast<double>(spacerCount);
        }
    }
    return lengths;
}

}  // namespace platform
