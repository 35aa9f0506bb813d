#pragma once

#include <Desktop/DesktopAppearance.h>
#include <Desktop/Outputs.h>

#include <functional>
#include <memory>
#include <string>

namespace platform {

class Observers;

/// What windows of widgets are on this desktop, found out from the protocols that it speaks.
enum class SurfaceKind {
    /// Wayland with the layer-shell protocol: below all windows, anchored to an output.
    layerShell,
    /// X11, also when reached from a Wayland desktop: below all windows, on all workspaces, in the work area.
    x11Desktop,
    /// Wayland without either: an ordinary window without decoration.
    plainWindow,
};

struct DesktopCapabilities {
    SurfaceKind surfaceKind = SurfaceKind::plainWindow;
    /// Widgets stay below other windows and on every workspace.
    bool staysOnDesktop = false;
    /// The program can place its widgets.
    bool canPlace = false;
    /// The user may drag a widget to any place; elsewhere a corner is chosen in the menu.
    bool canDrag = false;

    /// What this desktop lacks for widgets, as one English sentence for a terminal; empty when it lacks
    /// nothing.
    std::string limitation() const;
};

/// The connection to the user's desktop, one in a process. Events arrive through the main queue's loop, so
/// the program runs that loop. Main thread.
class DesktopSession {
  public:
    struct Opened {
        std::unique_ptr<DesktopSession> session;
        /// Why there is none, as one line for the user.
        std::string failure;
    };
    /// Connects, chooses the kind of surface, and reads the desktop's look, whose font the views use from
    /// then on. `programName` names the windows to the desktop (their class or application identifier);
    /// `isRightToLeft`: direction of the language of the texts.
    static Opened open(const std::string& programName, bool isRightToLeft);
    ~DesktopSession();
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;

    /// What the desktop gave for the next window to come to the front: an activation token or a startup
    /// identifier.
    void useActivationToken(const std::string& token) { activationToken_ = token; }

    const DesktopCapabilities& capabilities() const { return capabilities_; }
    Outputs& outputs() { return outputs_; }
    DesktopAppearance& appearance() { return appearance_; }

    // For the windows of this room:

    /// Empty where there is none; each is good for one window.
    std::string takeActivationToken();
    /// A window wants the front and the keyboard, which lifted widgets would keep from it.
    void aboutToPresentWindow();
    [[nodiscard]] std::shared_ptr<void> observePresenting(std::function<void()> presenting);

  private:
    explicit DesktopSession(SurfaceKind kind);

    DesktopCapabilities capabilities_;
    Outputs outputs_;
    DesktopAppearance appearance_;
    std::unique_ptr<Observers> presenting_;
    std::string activationToken_;
};

}  // namespace platform
