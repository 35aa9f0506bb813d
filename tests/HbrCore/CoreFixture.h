#pragma once

#include <Accounts/AccountsFile.h>
#include <HbrCore/CoreServices.h>
#include <support/TestEnvironment.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// The core over a temporary home with one folder of calendar files.
class CoreFixture {
  public:
    explicit CoreFixture(std::string_view now = "2026-03-04T09:00:00Z",
                         std::string_view zone = "Europe/Berlin")
        : environment(now, zone) {
        std::filesystem::create_directories(environment.home / "calendars");
        account("Home", "calendars", false);
    }

    void account(std::string name, std::string_view folder, bool isDelegate,
                 platform::Account::Contents contents = platform::Account::Contents::calendars) {
        platform::AccountsFile(environment).update([&](std::vector<platform::Account>& accounts) {
            accounts.push_back({.name = std::move(name),
                                .location = environment.home / folder,
                                .addresses = {"me@example.org"},
                                .isDelegate = isDelegate,
                                .contents = contents});
        });
    }
    void contacts(std::string_view folder) {
        account("Contacts", folder, false, platform::Account::Contents::contacts);
    }
    /// Items of one file, each "BEGIN:…" to "END:…" with "\n" line ends.
    void write(std::string_view name, std::string_view items) {
        environment.home.write(name,
                               "BEGIN:VCALENDAR\nVERSION:2.0\n" + std::string(items) + "END:VCALENDAR\n");
    }

    hbr::CoreServices& services() {
        if (!services_) {
            services_ = std::make_unique<hbr::CoreServices>(environment, hbr::CoreServices::Options{});
        }
        return *services_;
    }
    /// All calendars and lists switched on, then a reload.
    hbr::CalendarEventManager& reloaded() {
        services().manager().activateAllCalendars();
        std::vector<std::string> lists;
        for (const auto& list : services().manager().fetchReminderLists())
            lists.push_back(list.identifier);
        services().settings().setActiveReminderListIdentifiers(lists);
        hbr::reloadAndWait(services());
        return services().manager();
    }

    TestEnvironment environment;

  private:
    std::unique_ptr<hbr::CoreServices> services_;
};

inline std::vector<std::string> titles(const std::vector<hbr::Event>& events) {
    std::vector<std::string> list;
    for (const auto& event : events)
        list.push_back(event.title.value_or("-"));
    return list;
}

/// A VEVENT of one hour; "SUMMARY" and UID are the title.
inline std::string meeting(std::string_view title, std::string_view start, std::string_view more = "") {
    return "BEGIN:VEVENT\nUID:" + std::string(title) + "\nSUMMARY:" + std::string(title) +
           "\nDTSTART:" + std::string(start) + "\nDURATION:PT1H\n" + std::string(more) + "END:VEVENT\n";
}

}  // namespace test
