#pragma once

#include <WidgetHost/StaticConfiguration.h>

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

#include "WidgetSession.h"

namespace platform {

/// What `render` draws and how, as given on the command line.
struct RenderOptions {
    std::string family = "medium";
    int entry = 0;
    double scale = 1;
    std::string appearance = "light";
    std::string contrast = "normal";
    bool isDemonstration = false;
    /// Empty: from the file's ending, else png.
    std::string format;
    /// Empty: standard output.
    std::filesystem::path output;
};

/// Draws one entry of the widget's timeline; throws CommandFailure.
void render(const WidgetSession& session, const StaticConfiguration& widget, const RenderOptions& options,
            std::ostream& out);

}  // namespace platform
