#pragma once

#include <System/WakeSchedule.h>
#include <Views/LaidOutTree.h>
#include <gtk/gtk.h>

#include <functional>
#include <memory>

namespace platform {

/// A widget of a window that shows a view, painted once for each scale of its screen.
struct ViewAreaContent {
    Size points;
    /// Logical pixels per point.
    double scale = 1;
    /// `deviceScale`: device pixels per point.
    std::function<LaidOutTree(double deviceScale)> layOut;
    /// For a view that changes while time goes by: it is then kept up to date while it is seen.
    std::shared_ptr<WakeSchedule> wakes = nullptr;
};

GtkWidget* makeViewArea(ViewAreaContent content);
/// Asks for the tree again.
void refreshViewArea(GtkWidget* area);

}  // namespace platform
