#pragma once

#include <Desktop/WidgetWindow.h>
#include <gtk/gtk.h>

#include <memory>
#include <optional>
#include <string>

#include "WidgetCanvas.h"
#include "WidgetSurface.h"

namespace platform {

class GtkWidgetDesk;

class GtkWidgetWindow final : public WidgetWindow {
  public:
    GtkWidgetWindow(GtkWidgetDesk& desk, WidgetIdentity identity, WidgetFamily family,
                    const WidgetPlacement& placement, WidgetActions actions);
    ~GtkWidgetWindow() override;

    const WidgetIdentity& identity() const override { return identity_; }
    WidgetFamily family() const override { return family_; }
    const WidgetPlacement& placement() const override { return placement_; }
    void setContent(WidgetContent content) override;
    void invalidate() override;
    void setFamily(WidgetFamily family) override;
    void setPlacement(const WidgetPlacement& placement) override;
    void setBadge(std::optional<std::string> tooltip) override;
    bool isVisible() const override;

    // For the desk:

    bool hasContent() const { return static_cast<bool>(content_); }
    StackedSize size() const { return canvas_.size(); }
    /// Nothing: there is no output.
    void standAt(std::optional<SurfacePlace> place);
    /// The look of the desktop or the font is another one.
    void lookChanged();
    void setLevel(WidgetSurface::Level level);
    bool hasTargets() const { return canvas_.buttons().count() > 0; }
    /// Puts the keyboard on the first or last target.
    void focusFirst(bool fromEnd);

  private:
    void update();
    void setInputRegion();
    gboolean pressed(GdkEventKey* event);
    void moveFocus(int steps);
    void showFocus();
    /// What a menu opened by the event, or by a key, is about.
    std::optional<Url> targetOf(const GdkEvent* event) const;
    void showMenu(const GdkEvent* event);
    void startDragging();
    void drag();
    void endDragging(bool wasMoved);
    void closedByDesktop();

    GtkWidgetDesk& desk_;
    WidgetIdentity identity_;
    WidgetFamily family_;
    WidgetPlacement placement_;
    WidgetActions actions_;
    WidgetContent content_;
    GtkWidget* window_;
    WidgetCanvas canvas_;
    std::unique_ptr<WidgetSurface> surface_;
    WidgetSurface::Level level_ = WidgetSurface::Level::desktop;
    std::optional<SurfacePlace> place_;
    GtkGesture* dragGesture_ = nullptr;
    GtkWidget* menu_ = nullptr;
    struct Drag {
        Point pointer;
        Point window;
        Point last;
        bool hasMoved = false;
    };
    std::optional<Drag> drag_;
};

}  // namespace platform
