#include <HeedbannerWidgetExtension/Views/ConditionalStack.h>

namespace hbr {

using namespace platform;

View ConditionalStack::body() const {
    if (isHorizontal) {
        RowOptions row{.alignment = verticalAlignment};
        if (horizontalSpacing) row.spacing = *horizontalSpacing;
        return hstack(row, content);
    }
    ColumnOptions column{.alignment = horizontalAlignment};
    if (verticalSpacing) column.spacing = *verticalSpacing;
    return vstack(column, content);
}

}  // namespace hbr
