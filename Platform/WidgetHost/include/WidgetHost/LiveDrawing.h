#pragma once

#include <System/WakeSchedule.h>
#include <Views/LaidOutTree.h>
#include <Views/ViewContext.h>

#include <functional>
#include <memory>
#include <optional>

namespace platform {

/// Keeps what a window shows true: draws it again at the moment that the drawing itself names. The view is
/// asked for again where it would be another one; where only a timer ticks, it is laid out again. While
/// nobody sees the window, only whole minutes wake it. Main thread.
class LiveDrawing {
  public:
    /// The view as of the context's clock.
    using Content = std::function<View(const ViewContext& context)>;
    enum class Reason { content, time };
    /// Takes the tree to be seen from now on. False: it looks as the one before, so nothing will be painted.
    using Show = std::function<bool(LaidOutTree tree, Reason reason)>;

    LiveDrawing(std::shared_ptr<WakeSchedule> wakes, Show show);

    /// Draws now. The context's clock is ignored.
    void draw(Content content, const ViewContext& context);
    /// The tree is painted on the screen right now. One that is outdated is replaced first.
    void wasSeen();
    /// Known to be covered, or off the screen.
    void setHidden(bool isHidden);

    /// Of the tree that is shown.
    Date shownAt() const { return context_.now; }

  private:
    void drawAgain(Reason reason, bool makesView);
    void wake();
    void arm();
    std::optional<Date> nextChange() const;

    std::shared_ptr<WakeSchedule> wakes_;
    Show show_;
    Content content_;
    ViewContext context_;
    View view_;
    /// When the view itself is outdated, and when a timer in it.
    std::optional<Date> viewChange_;
    std::optional<Date> tick_;
    bool isSeen_ = false;
    bool isHidden_ = false;
    std::unique_ptr<WakeSchedule::Alarm> alarm_;
};

}  // namespace platform
