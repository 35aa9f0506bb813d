#pragma once

#include <Views/View.h>

#include <optional>
#include <vector>

namespace hbr {

/// The same children in a row or in a column.
struct ConditionalStack {
    bool isHorizontal = true;
    platform::HorizontalAlignment horizontalAlignment = platform::HorizontalAlignment::center;
    platform::VerticalAlignment verticalAlignment = platform::VerticalAlignment::center;
    /// Absent: the layout's usual spacing.
    std::optional<double> horizontalSpacing = std::nullopt;
    std::optional<double> verticalSpacing = std::nullopt;
    std::vector<platform::View> content;

    platform::View body() const;
};

}  // namespace hbr
