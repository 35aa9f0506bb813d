#include "DesktopJourney.h"

#include <sys/types.h>
#include <csignal>
#include <ctime>
#include <utility>

namespace test {

namespace {

constexpr const char* busName = "com.quietlark.heedbanner";

std::string utc(int secondsFromNow) {
    const std::time_t moment = std::time(nullptr) + secondsFromNow;
    std::tm parts{};
    gmtime_r(&moment, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%dT%H%M%SZ", &parts);
    return text;
}

}  // namespace

void DesktopJourney::SetUp() {
    desktop.variables["NO_AT_BRIDGE"] = "1";
    variables = desktop.variables;
    std::filesystem::create_directories(home / "calendars");
    notifications = std::make_unique<NotificationRecorder>(variables["DBUS_SESSION_BUS_ADDRESS"]);
}

void DesktopJourney::startWayland(int outputs) {
    desktop.startWayland(outputs);
    variables = desktop.variables;
}

void DesktopJourney::TearDown() {
    if (running) endDesktop();
    notifications.reset();
}

void DesktopJourney::startDesktop(const Arguments& arguments) {
    const Picture empty = screen().picture();
    running = start("heedbanner-desktop", arguments);
    ASSERT_TRUE(waitForAnotherPicture(empty));
}

Outcome DesktopJourney::endDesktop() {
    kill(running->process, SIGTERM);
    Outcome outcome = finish(*running);
    running.reset();
    return outcome;
}

void DesktopJourney::writeEvent(const std::string& file, const std::string& title, int startsIn,
                                std::string_view lines) const {
    constexpr int hour = 3600;
    const auto written = home.write("new-file", oneEvent(title, utc(startsIn), utc(startsIn + hour), lines));
    std::filesystem::rename(written, home / ("calendars/" + file));
}

void DesktopJourney::setUpCalendars(const Arguments& options) {
    constexpr int threeDays = 3 * 24 * 3600;
    writeEvent("base.ics", "Base", threeDays);
    Arguments arguments = {"setup", home / "calendars", "--yes"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    ASSERT_EQ(companion(arguments).exitCode, 0);
}

Picture DesktopJourney::picture() {
    constexpr double stillness = 0.4;
    Picture last = screen().picture();
    double since = secondsNow();
    waitUntil([&] {
        Picture now = screen().picture();
        if (now.pixels != last.pixels) since = secondsNow();
        last = std::move(now);
        return secondsNow() - since > stillness;
    });
    return last;
}

bool DesktopJourney::waitForAnotherPicture(const Picture& before) {
    return waitUntil([&] { return screen().picture().pixels != before.pixels; });
}

bool DesktopJourney::hasWindow(const std::string& title) {
    return !screen().windowsTitled(title).empty();
}

bool DesktopJourney::waitForWindow(const std::string& title) {
    return waitUntil([&] { return hasWindow(title); });
}

void DesktopJourney::closeWindow(const std::string& title) {
    for (const VirtualScreen::Window& window : screen().windowsTitled(title))
        screen().closeWindow(window.id);
}

void DesktopJourney::askOverTheBus(const std::string& action) {
    desktop.run({"gdbus", "call", "--session", "--dest", busName, "--object-path",
                 "/com/quietlark/heedbanner", "--method", "org.freedesktop.Application.ActivateAction",
                 action, "[]", "{}"});
}

bool DesktopJourney::waitUntilGone() {
    return waitUntil([&] {
        const std::string answer =
            desktop.run({"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                         "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.NameHasOwner", busName});
        return answer == "(false,)\n";
    });
}

}  // namespace test
