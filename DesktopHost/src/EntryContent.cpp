#include "EntryContent.h"

#include <algorithm>

namespace hbr {

platform::WidgetContent entryContent(const platform::WidgetEntry& entry) {
    return [view = entry.view, date = entry.date](const platform::ViewContext& context) {
        platform::ViewContext later = context;
        later.now = std::max(context.now, date, [](auto a, auto b) { return a < b; });
        return view(later);
    };
}

}  // namespace hbr
