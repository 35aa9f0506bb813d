#pragma once

#include <Desktop/DesktopSession.h>
#include <TimeAndText/Url.h>
#include <gtk/gtk.h>

#include <functional>
#include <string>

namespace platform {

enum class TextRole { title, heading, body, secondary };

/// Text that the toolkit shows; it would show nothing of bad UTF-8.
std::string valid(const std::string& text);

/// A text that wraps and starts at the leading edge.
GtkWidget* makeLabel(const std::string& text, TextRole role);

/// One whose links can be clicked and whose words can be copied.
GtkWidget* makeLinkedLabel(const std::string& text, std::function<void(const Url&)> open);

GtkWidget* makeButton(const std::string& label, std::function<void()> pressed);

/// Calls `closed` when the user closes the window, Escape included, instead of closing it. `closed` may
/// destroy it.
void onClose(GtkWidget* window, std::function<void()> closed);

/// Beside the pointer whose press or release is being handled, inside its screen's work area. Elsewhere, and
/// where programs cannot place their windows, it stays where the desktop puts it. Before it is shown.
void moveToPointer(GtkWidget* window);

/// In front, with the keyboard where the desktop allows it.
void presentWindow(GtkWidget* window, DesktopSession& session);

}  // namespace platform
