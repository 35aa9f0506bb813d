#pragma once

#include <Desktop/DesktopSession.h>
#include <Desktop/WidgetDesk.h>

#include <memory>
#include <vector>

#include "GObjects.h"
#include "GtkWidgetWindow.h"

namespace platform {

class GtkWidgetDesk final : public WidgetDesk {
  public:
    GtkWidgetDesk(DesktopSession& session, Options options);
    ~GtkWidgetDesk() override;

    std::unique_ptr<WidgetWindow> add(WidgetIdentity identity, WidgetFamily family,
                                      const WidgetPlacement& placement, WidgetActions actions) override;
    void lift(WidgetWindow* first) override;
    void lower() override;
    bool isLifted() const override { return isLifted_; }
    ViewContext contextFor(WidgetFamily family) const override;
    const std::shared_ptr<WakeSchedule>& wakes() const override { return options_.wakes; }

    // For the windows:

    const DesktopCapabilities& capabilities() const { return session_.capabilities(); }
    const Outputs& outputs() const { return session_.outputs(); }
    const WidgetMenuTexts& menuTexts() const { return options_.texts; }
    bool isRightToLeft() const { return options_.isRightToLeft; }
    bool isComposited() const;
    /// Logical pixels per point.
    double scale() const;
    void forget(GtkWidgetWindow& window);
    /// Gives every window its place.
    void restack();
    /// When what goes on has ended.
    void restackSoon();
    /// To the next or previous widget that has targets.
    void moveKeyboard(GtkWidgetWindow& from, int steps);
    /// That of a widget dragged to a point of the desktop.
    WidgetPlacement placementAt(Point desktopPoint, StackedSize size, WidgetPlacement before) const;

  private:
    void lookChanged();
    void giveKeyboard(GtkWidgetWindow& window, bool fromEnd);
    std::vector<GtkWidgetWindow*> inOrder() const;

    DesktopSession& session_;
    Options options_;
    std::vector<GtkWidgetWindow*> windows_;
    std::shared_ptr<void> outputsToken_;
    std::shared_ptr<void> appearanceToken_;
    std::shared_ptr<void> presentingToken_;
    std::unique_ptr<SignalConnection> compositedSignal_;
    bool isLifted_ = false;
    guint pendingRestack_ = 0;
};

}  // namespace platform
