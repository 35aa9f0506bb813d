#pragma once

#include <Views/LaidOutTree.h>
#include <gtk/gtk.h>

#include <functional>

namespace platform {

/// A widget of a window that shows a view, painted once for each scale of its screen.
struct ViewAreaContent {
    Size points;
    /// Logical pixels per point.
    double scale = 1;
    /// `deviceScale`: device pixels per point.
    std::function<LaidOutTree(double deviceScale)> layOut;
    /// For a view with timers, which then tick while they are seen.
    std::function<Date()> now = nullptr;
};

GtkWidget* makeViewArea(ViewAreaContent content);
/// Asks for the tree again.
void refreshViewArea(GtkWidget* area);

}  // namespace platform
