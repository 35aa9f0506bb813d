#pragma once

#include <functional>
#include <optional>
#include <vector>

namespace platform {

struct StackItem {
    /// 0: fixed; infinity: takes everything.
    double flexibility = 0;
    bool isSpacer = false;
    double minimumLength = 0;
    /// Length taken when that much (or, absent, the ideal) is offered.
    std::function<double(std::optional<double>)> lengthFor;
};

/// Lengths of a stack's items along its axis. Each item is offered an equal share of what is left, the less
/// flexible first; spacers share what the others leave, never less than their minimum. Without `available`
/// every item takes its ideal length. `spacing` stands between neighbours, none of which is a spacer.
std::vector<double> distribute(const std::vector<StackItem>& items, double spacing,
                               std::optional<double> available);

/// Blank before each item: 0 for the first.
std::vector<double> gapsBefore(const std::vector<StackItem>& items, double spacing);

}  // namespace platform
