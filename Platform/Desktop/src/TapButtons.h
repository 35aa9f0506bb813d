#pragma once

#include <Views/LaidOutTree.h>
#include <gtk/gtk.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// An invisible button over each tap target, through which pointer, keyboard and assistive tools reach it.
class TapButtons {
  public:
    struct Events {
        std::function<void(const Url&)> tapped;
        /// Pointer or keyboard came to or left the target.
        std::function<void(std::size_t target)> changed;
    };

    /// `parent` owns the buttons and lives at least as long.
    TapButtons(GtkFixed* parent, Events events);

    /// `origin`: where the tree's origin lies in the parent; `scale`: the parent's units per point. Buttons
    /// are kept where targets only changed, and with them the keyboard's place.
    void set(std::vector<TapTarget> targets, int origin, double scale);

    /// What can be tapped later but not now. Only assistive tools find it, as disabled buttons; the pointer
    /// reaches what is under them.
    void setDisabled(const std::vector<AccessibleElement>& elements, int origin, double scale);

    std::size_t count() const { return targets_.size(); }
    std::optional<std::size_t> hovered() const { return hovered_; }
    /// The one that has the keyboard within its window.
    std::optional<std::size_t> focused() const;
    /// What the pointer is over, else what has the keyboard.
    std::optional<Url> current() const;
    void focus(std::size_t target);
    void activateFocused() const;

  private:
    void tapped(std::size_t target) const;
    void addButton();
    void place(GtkWidget* widget, const Rect& frame, const std::string& label, int origin, double scale);
    std::size_t indexOf(GtkWidget* button) const;
    void setHovered(GtkWidget* button, bool isHovered);

    GtkFixed* parent_;
    Events events_;
    std::vector<TapTarget> targets_;
    int origin_ = 0;
    double scale_ = 0;
    std::vector<GtkWidget*> buttons_;
    std::vector<GtkWidget*> disabled_;
    std::optional<std::size_t> hovered_;
};

}  // namespace platform
