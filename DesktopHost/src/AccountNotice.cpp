#include <DesktopHost/AccountNotice.h>

#include <HbrLocalization/L10n.h>

namespace hbr {

namespace {

using platform::View;
using platform::ViewContext;

View notice(const std::string& title, const std::string& advice, const ViewContext& context) {
    using namespace platform;
    const Palette& palette = context.palette();
    const bool isSmall = context.family == WidgetFamily::systemSmall;
    const View texts =
        vstack({.alignment = HorizontalAlignment::leading, .spacing = 4},
               {text(title).font(system(isSmall ? 12 : 13).bold()).foreground(palette.primary).lineLimit(2),
                text(advice).font(system(11)).foreground(palette.secondary).lineLimit(isSmall ? 5 : 6)})
            .fillingWidth(HorizontalAlignment::leading);
    return link(*Url::parse(accountsUrl),
                texts.filling({HorizontalAlignment::leading, VerticalAlignment::center}));
}

}  // namespace

AccountNotice AccountNotice::of(const CoreServices& core, const platform::WidgetBundle& bundle) {
    AccountNotice notice;
    std::size_t readable = 0;
    std::string failing;
    for (const platform::AccountReport& report : core.aggregatedEventStore().report()) {
        if (report.account.contents != platform::Account::Contents::calendars) continue;
        if (report.readable) {
            ++readable;
            continue;
        }
        failing += (failing.empty() ? "" : ", ") + report.account.name;
        notice.problems.push_back(report.account.name + ": " + report.problem);
    }
    const bool isWatched = !core.settings().activeCalendarIdentifiers().empty() ||
                           !core.settings().activeReminderListIdentifiers().empty();
    if (readable == 0) {
        const bool hasNone = notice.problems.empty();
        const std::string key = hasNone ? "none" : "unreadable";
        notice.kind = hasNone ? Kind::noAccounts : Kind::unreadable;
        notice.title = bundle.localizedText("Widget.desktop.accounts." + key + ".title");
        notice.advice = bundle.localizedText("Widget.desktop.accounts." + key + ".advice");
    } else if (!isWatched) {
        notice.kind = Kind::unwatched;
        notice.title = bundle.localizedText("Widget.desktop.accounts.unwatched.title");
        notice.advice = bundle.localizedText("Widget.desktop.accounts.unwatched.advice");
    } else if (!failing.empty()) {
        notice.badge = bundle.localizedText("Widget.desktop.accounts.failing") + " " + failing;
    }
    return notice;
}

platform::WidgetContent noticeContent(const AccountNotice& shown) {
    return [title = shown.title.value_or(""), advice = shown.advice](const ViewContext& context) {
        return notice(title, advice, context);
    };
}

platform::Card noticeCard(const platform::Environment& environment, const AccountNotice& notice) {
    platform::Card card;
    card.title = notice.title.value_or(notice.badge.value_or(""));
    if (!notice.advice.empty()) card.lines.push_back(notice.advice);
    for (const std::string& problem : notice.problems)
        card.notes += (card.notes.empty() ? "" : "\n") + problem;
    card.buttons.push_back({L10n::General::ok(environment), [] {}});
    return card;
}

}  // namespace hbr
