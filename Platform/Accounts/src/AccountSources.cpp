#include <Accounts/AccountSources.h>

namespace platform {

AccountSources::AccountSources(const EnvironmentRef& environment)
    : file_(environment), locations_({}, environment->diagnostics) {}

std::vector<Account> AccountSources::accounts() const {
    return file_.load();
}

std::string AccountSources::problem(const Account& account) const {
    return locations_.problem(account);
}

AccountContents AccountSources::load(const Account& account) const {
    return locations_.load(account);
}

std::optional<std::string> AccountSources::read(const CalendarText& text,
                                                DiagnosticsSink& diagnostics) const {
    return locations_.read(text, diagnostics);
}

std::shared_ptr<void> AccountSources::watch(const std::vector<std::filesystem::path>& watched,
                                            std::function<void()> changed) const {
    std::vector<std::filesystem::path> paths = {file_.path()};
    paths.insert(paths.end(), watched.begin(), watched.end());
    return locations_.watch(paths, std::move(changed));
}

}  // namespace platform
