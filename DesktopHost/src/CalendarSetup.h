#pragma once

#include "CardDeck.h"

#include <Desktop/DesktopSession.h>
#include <DesktopHost/AccountNotice.h>
#include <WidgetHost/WidgetBundle.h>
#include <Workspace/ProgramRun.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace hbr {

/// Sets calendars up without a terminal: a card that says what is wrong, what `heedbanner setup` finds, and
/// offers to add it or a folder of the user's choice. The companion beside this program does the work; the
/// widgets follow its changes as any others. Main thread.
class CalendarSetup {
  public:
    CalendarSetup(const platform::Environment& environment, const platform::WidgetBundle& bundle,
                  platform::DesktopSession& session, CardDeck& cards);

    void show(const AccountNotice& notice);

  private:
    void look(const AccountNotice& notice);
    void chooseFolder();
    /// Says so when it fails.
    void change(std::vector<std::string> arguments);
    void run(std::vector<std::string> arguments,
             std::function<void(const platform::ProgramOutcome&)> ended) const;
    std::string text(const char* key) const;
    platform::Card card(const AccountNotice& notice);

    const platform::Environment& environment_;
    const platform::WidgetBundle& bundle_;
    platform::DesktopSession& session_;
    CardDeck& cards_;
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace hbr
