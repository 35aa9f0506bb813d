#pragma once

#include "Journey.h"
#include "NotificationRecorder.h"

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

    /// Starts the program of the desktop and waits until it can be reached.
    void startDesktop(const Arguments& arguments);
    Outcome desktop(const Arguments& arguments) { return run("heedbanner-desktop", arguments); }
    /// Asks it to end and gives what came of it.
    Outcome endDesktop();
    bool isReachable();

    /// A calendar with one event that begins in so many seconds and lasts an hour, written at once.
    void writeEvent(const std::string& file, const std::string& title, int startsIn,
                    std::string_view lines = {}) const;
    /// Adds the calendars and watches them.
    void setUpCalendars();

    /// The pixels of the screen once they stand still.
    std::string picture();
    bool waitForAnotherPicture(const std::string& before, double seconds = 30);
    void click(int x, int y);
    /// One whose title holds the text.
    bool hasWindow(const std::string& title);
    bool waitForWindow(const std::string& title);
    /// With the keyboard.
    void closeWindow(const std::string& title);
    /// As another program does; the bus starts the program of the desktop where it does not run.
    void askOverTheBus(const std::string& action);
    bool waitUntilGone();

    std::unique_ptr<NotificationRecorder> notifications;
    std::optional<Started> running;

  private:
    std::string pixels();
    Outcome tool(const Arguments& command);
    static void end(const std::optional<Started>& program);

    std::optional<Started> bus_;
    std::optional<Started> screen_;
};

}  // namespace test
