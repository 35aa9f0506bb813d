#pragma once

#include <Accounts/AccountsFile.h>
#include <HbrCore/CoreServices.h>
#include <Session/CompanionRecords.h>
#include <Session/Console.h>
#include <Session/ExitCode.h>
#include <Session/GeneralOptions.h>
#include <System/Environment.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace hbr {

/// What a command works with.
class CommandContext {
  public:
    CommandContext(platform::EnvironmentRef environment, Console console, GeneralOptions options,
                   CoreServices::Options coreOptions)
        : environment_(std::move(environment)),
          console_(console),
          options_(std::move(options)),
          coreOptions_(coreOptions) {}

    const platform::EnvironmentRef& environment() const { return environment_; }
    const Console& console() const { return console_; }
    const GeneralOptions& options() const { return options_; }
    platform::Date now() const { return environment_->now(); }
    platform::AccountsFile accounts() const { return platform::AccountsFile(environment_); }

    /// The core, made on first use.
    CoreServices& core();
    /// Makes the next call of `core` read the accounts again.
    void forgetCore() { core_.reset(); }
    CompanionRecords& records();

    /// Printed when the command has ended, on one line with the summary of problems.
    void addRemark(std::string remark) { remarks_.push_back(std::move(remark)); }
    const std::vector<std::string>& remarks() const { return remarks_; }

    /// Throws CommandFailure when there is no account (nothingThere) or when none can be read (failed).
    void requireReadableAccounts();

  private:
    platform::EnvironmentRef environment_;
    Console console_;
    GeneralOptions options_;
    CoreServices::Options coreOptions_;
    std::unique_ptr<CoreServices> core_;
    std::unique_ptr<CompanionRecords> records_;
    std::vector<std::string> remarks_;
};

}  // namespace hbr
