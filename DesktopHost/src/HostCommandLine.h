#pragma once

#include "HostFailure.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// What the user asked the program for.
struct HostRequest {
    enum class Task { show, gallery, list, add, remove, focus, quit };

    Task task = Task::show;
    /// "WIDGET:FAMILY": to be shown, or the one to be added.
    std::vector<std::string> widgets;
    /// Of the one to be added.
    std::string corner = "top-end";
    std::string output;
    /// "all" or a number of the list.
    std::string removed;
    /// Empty for the first.
    std::string focused;
    bool wantsJson = false;
    /// The session bus starts the program for a request that follows.
    bool isService = false;
    bool isVerbose = false;
    /// "-" for standard error; empty for none.
    std::string log;
};

struct HostCommandLine {
    /// Nothing when everything was said already, or the arguments are wrong.
    std::optional<HostRequest> request;
    ExitStatus status = ExitStatus::done;
    /// For standard output; for standard error where `status` is not done.
    std::string text;
};

/// `arguments` without the program's name.
HostCommandLine readHostCommandLine(const std::vector<std::string>& arguments, std::string_view version);

}  // namespace hbr
