#pragma once

#include <Desktop/CardWindow.h>
#include <Desktop/WidgetWindow.h>
#include <HbrCore/CoreServices.h>
#include <WidgetHost/WidgetBundle.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// The address behind a widget that has no calendars to show.
inline constexpr std::string_view accountsUrl = "heedbanner-desktop:accounts";

/// What is wrong with the accounts, in the user's language. Nothing of it when all can be read and
/// calendars are watched.
struct AccountNotice {
    enum class Kind { nothing, noAccounts, unreadable, unwatched };

    Kind kind = Kind::nothing;
    /// There is nothing to show: what to say in place of the widgets, and what to do.
    std::optional<std::string> title;
    std::string advice;
    /// Some accounts fail: one line that names them.
    std::optional<std::string> badge;
    /// An account and why it cannot be read, a line each.
    std::vector<std::string> problems;

    static AccountNotice of(const CoreServices& core, const platform::WidgetBundle& bundle);

    friend bool operator==(const AccountNotice&, const AccountNotice&) = default;
};

/// Shown in the widgets; a tap opens accountsUrl.
platform::WidgetContent noticeContent(const AccountNotice& notice);
platform::Card noticeCard(const platform::Environment& environment, const AccountNotice& notice);

}  // namespace hbr
