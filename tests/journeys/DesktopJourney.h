#pragma once

#include "Journey.h"
#include "NotificationRecorder.h"

#include <support/desktop/TestDesktop.h>

#include <memory>
#include <optional>
#include <string>

namespace test {

/// A session of its own: a bus, a screen that nobody sees, a notification service that remembers. Events lie
/// near the present moment, since the program of the desktop lives by the real clock.
class DesktopJourney : public Journey {
  protected:
    void SetUp() override;
    void TearDown() override;
    /// Sway in place of X.
    void startWayland(int outputs);

    /// Starts the program of the desktop and waits until it shows something.
    void startDesktop(const Arguments& arguments);
    Outcome runDesktop(const Arguments& arguments) { return run("heedbanner-desktop", arguments); }
    /// Asks it to end and gives what came of it.
    Outcome endDesktop();

    /// A calendar with one event that begins in so many seconds and lasts an hour, written at once.
    void writeEvent(const std::string& file, const std::string& title, int startsIn,
                    std::string_view lines = {}) const;
    /// Adds the calendars and watches them.
    void setUpCalendars(const Arguments& options = {});

    VirtualScreen& screen() { return desktop.screen(); }
    /// The screen once it no longer changes.
    Picture picture();
    bool waitForAnotherPicture(const Picture& before);
    bool hasWindow(const std::string& title);
    bool waitForWindow(const std::string& title);
    void closeWindow(const std::string& title);
    /// As another program does; the bus starts the program of the desktop where it does not run.
    void askOverTheBus(const std::string& action);
    /// Waits until nobody has the program's name on the bus.
    bool waitUntilGone();

    TestDesktop desktop;
    std::unique_ptr<NotificationRecorder> notifications;
    std::optional<Started> running;
};

}  // namespace test
