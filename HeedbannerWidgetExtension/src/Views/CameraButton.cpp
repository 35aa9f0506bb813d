#include <HeedbannerWidgetExtension/Views/CameraButton.h>

#include <HbrCore/DeepLinks/DeepLink.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>
#include <Views/Legibility.h>

namespace hbr {

using namespace platform;

bool CameraButton::isActive() const {
    return isPending || isCurrentEvent(event, now);
}

View CameraButton::body(const ViewContext& context, Color ground) const {
    if (event.videoConferenceLinks.empty()) return {};
    const Palette& palette = context.palette();
    const Color capsuleFill = palette.gray.withAlpha(isActive() ? 0.5 : 0.3);
    const Color base = isCurrentEvent(event, now) ? palette.green
                       : isPending                ? palette.orange
                                                  : palette.primary;
    const Color symbolColor = legible(base, blended(capsuleFill, ground), palette.symbolRatio());

    const View content = symbol("video.fill")
                             .foreground(isActive() ? symbolColor : Palette::disabled(base))
                             .padding(Insets::symmetric(6, 3))
                             .background(capsule().foreground(capsuleFill))
                             .accessibilityHidden();
    const View button = isActive() ? link(JoinCallDeepLink(event.id).url(), content) : inactiveLink(content);
    return button.accessibilityLabel(L10n::Alert::VideoConferenceMenu::join());
}

}  // namespace hbr
