#pragma once

#include "Framework/Completion.h"

#include <string_view>
#include <vector>

namespace hbr {

/// The user's events, calendars, accounts and settings as values of arguments. Changes nothing and reports no
/// problems.
class ArgumentCandidates {
  public:
    /// `program`: the path under which the program was started.
    explicit ArgumentCandidates(const char* program) : program_(program) {}

    std::vector<Candidate> of(std::string_view command, std::string_view argument) const;

  private:
    const char* program_;
};

}  // namespace hbr
