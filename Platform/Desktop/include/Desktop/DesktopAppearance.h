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
/// the toolkit's settings. Applies it to the views (their font) and to the toolkit's own windows (light or
/// dark). Main thread.
class DesktopAppearance {
  public:
    DesktopAppearance();
    ~DesktopAppearance();
    DesktopAppearance(const DesktopAppearance&) = delete;
    DesktopAppearance& operator=(const DesktopAppearance&) = delete;

    const DesktopLook& current() const;
    /// Called after each change of current(). Ends with the returned token.
    [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> changed);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace platform
