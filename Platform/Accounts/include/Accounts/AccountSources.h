#pragma once

#include <Accounts/AccountsFile.h>
#include <CalendarStore/LocationSources.h>

namespace platform {

/// The accounts of `accounts.toml`, read again with every question for them. All are locations today; for an
/// account that is not, this is where its source is chosen.
class AccountSources final : public CalendarSources {
  public:
    explicit AccountSources(const EnvironmentRef& environment);

    std::vector<Account> accounts() const override;
    std::string problem(const Account& account) const override;
    AccountContents load(const Account& account) const override;
    std::optional<std::string> read(const CalendarText& text) const override;
    std::shared_ptr<void> watch(const std::vector<std::filesystem::path>& watched,
                                std::function<void()> changed) const override;

  private:
    AccountsFile file_;
    LocationSources locations_;
};

}  // namespace platform
