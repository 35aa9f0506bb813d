#pragma once

#include <Views/Palette.h>

#include <functional>
#include <memory>
#include <string>

namespace platform {

/// How the user's desktop wants programs to look.
struct DesktopLook {
    Appearance appearance = Appearance::light;
    Contrast contrast = Contrast::normal;
    /// The interface font's family; empty when the desktop names none.
    std::string fontFamily;
    /// 1 is the usual size.
    double textScale = 1;

    friend bool operator==(const DesktopLook&, const DesktopLook&) = default;
};

/// Follows the desktop's look: the settings portal (org.freedesktop.portal.Settings) where there is one, else
/// the toolkit's own settings. Main thread.
class DesktopAppearance {
  public:
    virtual ~DesktopAppearance() = default;

    virtual DesktopLook current() const = 0;
    /// Called after each change, when current() already has it. Ends with the returned token.
    [[nodiscard]] virtual std::shared_ptr<void> observe(std::function<void()> changed) = 0;
};

}  // namespace platform
