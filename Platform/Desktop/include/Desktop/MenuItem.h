#pragma once

#include <functional>
#include <string>
#include <vector>

namespace platform {

/// An entry of a context menu, ready for display.
struct MenuItem {
    enum class Kind {
        action,
        /// One of several, of which one is marked. Choosing the marked one does nothing.
        choice,
        /// On when marked.
        toggle,
        submenu,
    };

    Kind kind = Kind::action;
    std::string label;
    std::function<void()> chosen = nullptr;
    bool isMarked = false;
    std::vector<MenuItem> submenu = {};
};

}  // namespace platform
