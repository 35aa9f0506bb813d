#pragma once

#include <Desktop/WidgetWindow.h>
#include <System/WakeSchedule.h>
#include <WidgetHost/LiveDrawing.h>
#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CornerStack.h"
#include "GObjects.h"
#include "PaintedTree.h"
#include "TapButtons.h"
#include "TargetOutline.h"
#include "WidgetShadow.h"

namespace platform {

/// What a widget's window shows: the painted content with its shadow, the mark of pointer and keyboard, the
/// badge, and buttons over the tap targets. What it shows stays true while time goes by.
class WidgetCanvas {
  public:
    /// `parent`: the window's only child; `name`: of the widget, for assistive tools.
    WidgetCanvas(GtkFixed* parent, std::string name, std::shared_ptr<WakeSchedule> wakes,
                 std::function<void(const Url&)> tapped);
    ~WidgetCanvas();

    struct Look {
        /// `context.now` is ignored.
        ViewContext context;
        /// Logical pixels per point.
        double scale = 1;
        int deviceScale = 1;
        /// Nothing blends the window with what is behind it: square corners, no shadow.
        bool isFilled = false;
    };
    /// Asks the content for its view and draws it.
    void show(const WidgetContent& content, const Look& look);
    /// The font is another one: nothing painted so far can be kept.
    void forget() { painted_.forget(); }
    void setBadge(std::optional<std::string> tooltip);
    void setObscured(bool isObscured);
    bool isObscured() const { return isObscured_; }

    /// Of the widget itself, in logical pixels.
    StackedSize size() const;
    int margin() const { return look_.isFilled ? 0 : shadowMargin; }
    TapButtons& buttons() { return buttons_; }
    const TapButtons& buttons() const { return buttons_; }

  private:
    enum class Speech {
        now,
        /// Timer ticks are announced at most once a minute.
        seldom,
    };
    /// False: nothing is to be painted.
    bool take(LaidOutTree tree, Speech speech);
    void draw(cairo_t* cairo);
    void drawTargets(cairo_t* cairo);
    void drawBadge(cairo_t* cairo) const;
    void placeBadge();
    Rect badgeFrame() const;
    void redraw(const Rect& points);
    std::vector<TapTarget> said(std::vector<TapTarget> targets, Speech speech);

    GtkFixed* parent_;
    /// Kept until the end: widgets that are destroyed report it when these have left the window.
    Object<GtkWidget> area_;
    Object<GtkWidget> badge_;
    TapButtons buttons_;
    Look look_;
    PaintedTree painted_;
    WidgetShadow shadow_;
    std::vector<TargetOutline> outlines_;
    std::optional<std::string> badgeText_;
    std::string name_;
    /// As assistive tools know them.
    std::vector<TapTarget> said_;
    Date saidAt_;
    bool isObscured_ = false;
    LiveDrawing drawing_;
};

}  // namespace platform
