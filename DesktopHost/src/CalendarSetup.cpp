#include "CalendarSetup.h"

#include "EventCard.h"

#include <Desktop/FolderChooser.h>
#include <System/Environment.h>
#include <TimeAndText/Text.h>

#include <utility>

namespace hbr {

namespace {

constexpr const char* cardName = "accounts";

}  // namespace

CalendarSetup::CalendarSetup(const platform::Environment& environment, const platform::WidgetBundle& bundle,
                             platform::DesktopSession& session, CardDeck& cards)
    : environment_(environment), bundle_(bundle), session_(session), cards_(cards) {}

std::string CalendarSetup::text(const char* key) const {
    return bundle_.localizedText(std::string("Widget.desktop.accounts.setup.") + key);
}

platform::Card CalendarSetup::card(const AccountNotice& notice) {
    platform::Card card = noticeCard(environment_, notice);
    // It says by its buttons what a click on the widget was promised to do.
    card.lines.clear();
    card.buttons = {{text("choose"), [this] { chooseFolder(); }}};
    return card;
}

void CalendarSetup::show(const AccountNotice& notice) {
    using Kind = AccountNotice::Kind;
    if (notice.kind == Kind::noAccounts) return look(notice);
    if (notice.kind == Kind::nothing) return cards_.show(cardName, noticeCard(environment_, notice));
    platform::Card shown = card(notice);
    if (notice.kind == Kind::unwatched)
        shown.primary = {text("watchAll"), [this] { change({"calendars", "activate", "--all"}); }};
    cards_.show(cardName, std::move(shown));
}

void CalendarSetup::look(const AccountNotice& notice) {
    run({"setup", "--dry-run"}, [this, notice](const platform::ProgramOutcome& found) {
        platform::Card shown = card(notice);
        const std::string accounts = platform::trimmed(found.output);
        if (found.isSuccess && !accounts.empty()) {
            shown.lines = {text("found")};
            shown.notes = accounts;
            shown.primary = {text("add"), [this] { change({"setup", "--yes"}); }};
        } else {
            shown.lines = {text("nothing")};
        }
        cards_.show(cardName, std::move(shown));
    });
}

void CalendarSetup::chooseFolder() {
    platform::chooseFolder(session_, text("folder"), text("accept"),
                           [this, alive = std::weak_ptr(isAlive_)](const std::filesystem::path& folder) {
                               if (alive.lock()) change({"setup", "--yes", "--", folder.string()});
                           });
}

void CalendarSetup::change(std::vector<std::string> arguments) {
    run(std::move(arguments), [this](const platform::ProgramOutcome& outcome) {
        if (!outcome.isSuccess)
            cards_.show(cardName,
                        messageCard(environment_, text("failed"), platform::trimmed(outcome.errors)));
    });
}

void CalendarSetup::run(std::vector<std::string> arguments,
                        std::function<void(const platform::ProgramOutcome&)> ended) const {
    arguments.insert(arguments.begin(), (platform::programPath("").parent_path() / "heedbanner").string());
    platform::runProgram(arguments, [ended = std::move(ended), alive = std::weak_ptr(isAlive_)](
                                        const platform::ProgramOutcome& outcome) {
        if (alive.lock()) ended(outcome);
    });
}

}  // namespace hbr
