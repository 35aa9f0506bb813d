#include <Desktop/DesktopSession.h>

#include <gdk/gdkx.h>
#include <gtk-layer-shell/gtk-layer-shell.h>
#include <gtk/gtk.h>

#include <clocale>
#include <cstdlib>
#include <utility>

#include "LayerShellProbe.h"
#include "Observers.h"

namespace platform {

namespace {

/// The toolkit's backends to try, best first. A user's GDK_BACKEND is respected.
void chooseBackend() {
    if (std::getenv("GDK_BACKEND")) return;
    const WaylandDisplay wayland = probeWayland();
    if (wayland.hasLayerShell) {
        gdk_set_allowed_backends("wayland");
    } else if (wayland.isThere) {
        // Through the X server of a Wayland desktop widgets are below the windows; on its own they cannot.
        gdk_set_allowed_backends("x11,wayland");
    } else {
        gdk_set_allowed_backends("x11");
    }
}

/// Nothing here draws with OpenGL, whose drivers would take more memory than all the rest and time at the
/// start. Only for the toolkit: programs that are opened get their environment from this process.
bool initializeWithoutGl() {
    constexpr const char* variable = "GDK_GL";
    const bool isOurs = !std::getenv(variable);
    if (isOurs) setenv(variable, "disable", 0);
    const bool hasDesktop = gtk_init_check(nullptr, nullptr);
    if (isOurs) unsetenv(variable);
    return hasDesktop;
}

SurfaceKind surfaceKindOf(GdkDisplay* display) {
    if (GDK_IS_X11_DISPLAY(display)) return SurfaceKind::x11Desktop;
    return gtk_layer_is_supported() ? SurfaceKind::layerShell : SurfaceKind::plainWindow;
}

}  // namespace

std::string DesktopCapabilities::limitation() const {
    if (surfaceKind != SurfaceKind::plainWindow) return {};
    return "this desktop offers neither layer-shell nor an X server, so widgets are ordinary windows: they "
           "may "
           "be covered, stay on one workspace, and stand where the desktop puts them";
}

DesktopSession::Opened DesktopSession::open(const std::string& programName, bool isRightToLeft) {
    // The toolkit would change how this process writes numbers.
    gtk_disable_setlocale();
    std::setlocale(LC_CTYPE, "");
    std::setlocale(LC_MESSAGES, "");
    g_set_prgname(programName.c_str());
    chooseBackend();
    if (!initializeWithoutGl())
        return {nullptr, "there is no desktop here (neither WAYLAND_DISPLAY nor DISPLAY leads to one)"};
    gdk_set_program_class(programName.c_str());
    gtk_widget_set_default_direction(isRightToLeft ? GTK_TEXT_DIR_RTL : GTK_TEXT_DIR_LTR);
    return {std::unique_ptr<DesktopSession>(new DesktopSession(surfaceKindOf(gdk_display_get_default()))),
            {}};
}

DesktopSession::DesktopSession(SurfaceKind kind)
    : capabilities_{.surfaceKind = kind,
                    .staysOnDesktop = kind != SurfaceKind::plainWindow,
                    .canPlace = kind != SurfaceKind::plainWindow,
                    .canDrag = kind == SurfaceKind::x11Desktop},
      presenting_(std::make_unique<Observers>()) {
    // Otherwise a text that gets the keyboard is selected.
    g_object_set(gtk_settings_get_default(), "gtk-label-select-on-focus", FALSE, nullptr);
}

DesktopSession::~DesktopSession() = default;

std::string DesktopSession::takeActivationToken() {
    return std::exchange(activationToken_, {});
}

void DesktopSession::aboutToPresentWindow() {
    presenting_->notify();
}

std::shared_ptr<void> DesktopSession::observePresenting(std::function<void()> presenting) {
    return presenting_->add(std::move(presenting));
}

}  // namespace platform
