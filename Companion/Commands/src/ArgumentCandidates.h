#pragma once

#include "Completion.h"

#include <string_view>
#include <vector>

namespace hbr {

/// What the user has, as values of commands' arguments: events, calendars, accounts, settings. Nothing is
/// changed and nothing complained about.
class ArgumentCandidates {
  public:
    /// `program`: the path under which the program was started.
    explicit ArgumentCandidates(const char* program) : program_(program) {}

    std::vector<Candidate> of(std::string_view command, std::string_view argument) const;

  private:
    const char* program_;
};

}  // namespace hbr
