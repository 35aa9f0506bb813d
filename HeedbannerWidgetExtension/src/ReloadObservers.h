#pragma once

#include <System/NotificationCenter.h>

namespace hbr {

/// From the first call on, an announced reload of the events asks the widget centre for new timelines, once
/// for each kind.
void observeReloads(platform::NotificationCenter& center);

}  // namespace hbr
