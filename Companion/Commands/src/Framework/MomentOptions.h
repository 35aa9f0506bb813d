#pragma once

#include <Session/CommandContext.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace hbr {

/// The options `--at WHEN` and `--in DURATION` of a command. Their words need no quotation marks.
class MomentOptions {
  public:
    void declare(CLI::App& app);
    bool given() const { return !at_.empty() || !in_.empty(); }

    /// Nothing when neither was given. If `text` is empty, the longest beginning of the words that is a
    /// moment is used, and the rest goes to `text` ("remind --in 20m Call Anna"). Throws CommandFailure
    /// (wrongUsage) that names `command`.
    std::optional<platform::Date> moment(std::string_view command, std::vector<std::string>& text,
                                         const CommandContext& context) const;

  private:
    std::vector<std::string> at_;
    std::vector<std::string> in_;
};

}  // namespace hbr
