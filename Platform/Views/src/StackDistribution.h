#pragma once

#include <functional>
#include <optional>
#include <vector>

namespace platform {

/// What happens to a length when there is less or more room than the ideal. In the order in which stacks
/// serve their items.
enum class Flexibility { fixed, compressible, stretching };

struct StackItem {
    Flexibility flexibility = Flexibility::fixed;
    bool isSpacer = false;
    double minimumLength = 0;
    /// Length taken when that much (or, absent, the ideal) is offered.
    std::function<double(std::optional<double>)> lengthFor;
};

/// Lengths of a stack's items along its axis. Each item is offered an equal share of what is left: fixed ones
/// first, then compressible ones, the shorter before the longer, so that none is compressed while the ideal
/// lengths fit; then stretching ones; spacers share what the others leave, never less than their minimum.
/// Without `available` every item takes its ideal length. `spacing` stands between neighbours, none of which
/// is a spacer.
std::vector<double> distribute(const std::vector<StackItem>& items, double spacing,
                               std::optional<double> available);

/// Blank before each item: 0 for the first.
std::vector<double> gapsBefore(const std::vector<StackItem>& items, double spacing);

}  // namespace platform
