#pragma once

#include <CalendarStore/CalendarSources.h>
#include <System/Diagnostics.h>

namespace platform {

/// A fixed list of accounts, whose locations are .ics files, folders of them or trees of such folders; see
/// `discoverCollections`. The files `displayname` and `color` of a folder name it.
class LocationSources final : public CalendarSources {
  public:
    LocationSources(std::vector<Account> accounts, std::shared_ptr<DiagnosticsSink> diagnostics);

    std::vector<Account> accounts() const override;
    std::string problem(const Account& account) const override;
    AccountContents load(const Account& account) const override;
    std::optional<std::string> read(const CalendarText& text, DiagnosticsSink& diagnostics) const override;
    /// `watched`: files and folders.
    std::shared_ptr<void> watch(const std::vector<std::filesystem::path>& watched,
                                std::function<void()> changed) const override;

  private:
    std::vector<Account> accounts_;
    std::shared_ptr<DiagnosticsSink> diagnostics_;
};

}  // namespace platform
