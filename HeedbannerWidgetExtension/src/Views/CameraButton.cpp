#include <HeedbannerWidgetExtension/Views/CameraButton.h>

#include <HbrCore/DeepLinks/DeepLink.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>
#include <TimeAndText/Text.h>
#include <Views/Legibility.h>

#include <string>
#include <utility>

namespace hbr {

using namespace platform;

bool CameraButton::isActive() const {
    return isPending || isCurrentEvent(event, now);
}

View CameraButton::body(const ViewContext& context, Color ground) const {
    if (event.videoConferenceLinks.empty()) return {};
    const Palette& palette = context.palette();
    const Color capsuleFill = palette.gray.withAlpha(isActive() ? 0.5 : 0.3);
    const Color base = isCurrentEvent(event, context.clockAt(now)) ? palette.green
                       : isPending                                 ? palette.orange
                                                                   : palette.primary;
    const Color capsuleGround = blended(capsuleFill, ground);
    const Color symbolColor =
        isActive() ? legible(base, capsuleGround, palette.symbolRatio())
                   : legibleTranslucent(Palette::disabled(base), capsuleGround, palette.symbolRatio());

    const View content = symbol("video.fill")
                             .foreground(symbolColor)
                             .padding(Insets::symmetric(6, 3))
                             .background(capsule().foreground(capsuleFill))
                             .accessibilityHidden();
    const View button = isActive() ? link(JoinCallDeepLink(event.id).url(), content) : inactiveLink(content);
    // Each says its meeting, since a list has several.
    std::string label = L10n::Alert::VideoConferenceMenu::join(environment);
    const std::string title = trimmed(event.title.value_or(""));
    if (!title.empty()) label += ": " + title;
    return button.accessibilityLabel(std::move(label));
}

}  // namespace hbr
