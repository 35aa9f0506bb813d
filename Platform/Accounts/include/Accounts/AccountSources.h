#pragma once

#include <Accounts/AccountsFile.h>
#include <CalendarStore/LocationSources.h>

namespace platform {

/// The accounts of `accounts.toml`, which every call of `accounts` reads again. All of them are locations;
/// the source of an account that is not would be chosen here.
class AccountSources final : public CalendarSources {
  public:
    explicit AccountSources(const EnvironmentRef& environment);

    std::vector<Account> accounts() const override;
    std::string problem(const Account& account) const override;
    AccountContents load(const Account& account) const override;
    std::optional<std::string> read(const CalendarText& text, DiagnosticsSink& diagnostics) const override;
    std::shared_ptr<void> watch(const std::vector<std::filesystem::path>& watched,
                                std::function<void()> changed) const override;

  private:
    AccountsFile file_;
    LocationSources locations_;
};

}  // namespace platform
