#pragma once

#include <Desktop/WidgetWindow.h>
#include <WidgetHost/StaticConfiguration.h>

namespace hbr {

/// The entry's view, never as of a moment before the entry.
platform::WidgetContent entryContent(const platform::WidgetEntry& entry);

}  // namespace hbr
