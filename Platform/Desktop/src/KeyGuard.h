#pragma once

#include <gtk/gtk.h>

namespace platform {

/// Keeps a window that comes by itself from taking the keys of someone who is typing: keys do nothing until
/// `quietSeconds` have passed without one, or until the pointer pressed inside the window. Connect it before
/// other handlers of keys. Ends with the window; main thread.
class KeyGuard {
  public:
    KeyGuard(GtkWidget* window, double quietSeconds);
    ~KeyGuard();
    KeyGuard(const KeyGuard&) = delete;
    KeyGuard& operator=(const KeyGuard&) = delete;

  private:
    bool swallows(const GdkEventKey& event);

    GtkWidget* window_;
    const gint64 quiet_;
    gint64 lastKey_;
    bool isLifted_ = false;
    /// Of the last key that was swallowed: its release is, too.
    guint swallowedKey_ = 0;
};

}  // namespace platform
