#pragma once

#include <Desktop/DesktopAppearance.h>
#include <Desktop/Outputs.h>

#include <memory>
#include <string>

namespace platform {

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
    /// The program decides where a widget stands.
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
    virtual ~DesktopSession() = default;

    struct Opened {
        std::unique_ptr<DesktopSession> session;
        /// Why there is none, as one line for the user.
        std::string failure;
    };
    /// Connects, chooses the kind of surface, and reads the desktop's look, whose font the views use from
    /// then on. `programName` names the windows to the desktop (their class or application identifier);
    /// `isRightToLeft`: direction of the language of the texts.
    static Opened open(const std::string& programName, bool isRightToLeft);

    /// What the desktop gave for the next window to come to the front: an activation token or a startup
    /// identifier.
    virtual void useActivationToken(const std::string& token) = 0;

    virtual const DesktopCapabilities& capabilities() const = 0;
    virtual Outputs& outputs() = 0;
    virtual DesktopAppearance& appearance() = 0;
};

}  // namespace platform
