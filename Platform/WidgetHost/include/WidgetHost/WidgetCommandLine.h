#pragma once

#include <System/Environment.h>
#include <Values/JsonValue.h>
#include <WidgetHost/WidgetBundle.h>

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// The driver of a program that answers for its widgets on the command line: gallery, placeholder, snapshot,
/// timeline, render. Answers go to `out`, everything else to `err`.
class WidgetCommandLine {
  public:
    struct Program {
        std::string name;
        std::string summary;
        std::string version;
        /// Command lines with what they do, shown in the help.
        std::vector<std::pair<std::string, std::string>> examples;
        /// The bundle over the environment with the clock of `--now`; `demo` for one that shows
        /// demonstration events and touches no setting.
        std::function<std::unique_ptr<WidgetBundle>(EnvironmentRef environment, bool demo)> makeBundle;
    };

    WidgetCommandLine(Program program, std::shared_ptr<const Environment> environment, std::ostream& out,
                      std::ostream& err);

    /// Exit status: 0 done, 1 failed, 2 wrong usage. Runs the main queue; main thread only.
    int run(const std::vector<std::string>& arguments);

  private:
    Program program_;
    std::shared_ptr<const Environment> environment_;
    std::ostream& out_;
    std::ostream& err_;
};

}  // namespace platform
