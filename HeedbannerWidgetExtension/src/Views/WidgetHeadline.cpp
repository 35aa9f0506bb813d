#include "WidgetHeadline.h"

#include <TimeAndText/Text.h>

namespace hbr {

using namespace platform;

View widgetHeadline(std::string_view key, const WidgetStrings& strings, const ViewContext& context) {
    return text(uppercased(strings.text(key), strings.language()))
        .font(system(10).bold())
        .foreground(context.palette().secondary)
        .lineLimit(1)
        .allowsTightening()
        .minimumScaleFactor(0.7);
}

}  // namespace hbr
