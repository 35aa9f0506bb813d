#pragma once

#include <HeedbannerWidgetExtension/WidgetStrings.h>
#include <Views/View.h>
#include <Views/ViewContext.h>

#include <string_view>

namespace hbr {

/// The line above a widget's content, in capitals. It keeps to one line, so that no language costs a row.
platform::View widgetHeadline(std::string_view key, const WidgetStrings& strings,
                              const platform::ViewContext& context);

}  // namespace hbr
