#pragma once

#include "Status/Status.h"

#include <optional>
#include <string>

namespace hbr {

enum class StatusFormat { plain, waybar, i3blocks, json };

/// How the line is written.
struct StatusOptions {
    StatusFormat format = StatusFormat::plain;
    StatusTemplate line{"{title} · {when}"};
    std::optional<std::size_t> maxLength;
    /// i3blocks reads three lines from a command that ends, and JSON from one that keeps running.
    bool follows = false;
};

/// The output, without the last line break.
std::string statusOutput(const Status& status, const StatusOptions& options, const CoreServices& core);

}  // namespace hbr
