#pragma once

#include <HbrLocalization/FormatArgument.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace hbr {

/// The arguments of a text, ready to be put in: those that run against the sentence are isolated.
class ArgumentList {
  public:
    ArgumentList(std::span<const L10n::FormatArgument> arguments, bool isRightToLeftSentence);
    ArgumentList(const ArgumentList&) = delete;
    ArgumentList& operator=(const ArgumentList&) = delete;

    std::span<const L10n::FormatArgument> arguments() const { return arguments_; }
    /// The first number, which chooses the form of the text.
    std::optional<std::int64_t> count() const { return count_; }

  private:
    std::vector<L10n::FormatArgument> arguments_;
    /// What isolated arguments refer to.
    std::vector<std::string> isolated_;
    std::optional<std::int64_t> count_;
};

}  // namespace hbr
