#include "DesktopJourney.h"

#include <Foundation/Date.h>

#include <sys/wait.h>
#include <unistd.h>
#include <chrono>
#include <csignal>
#include <ctime>
#include <fstream>
#include <functional>
#include <thread>
#include <utility>

namespace test {

namespace {

constexpr double patience = 30;

bool waitUntil(double seconds, const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

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
    for (const char* program :
         {"/usr/bin/dbus-daemon", "/usr/bin/Xvfb", "/usr/bin/xdotool", "/usr/bin/xwd"}) {
        if (access(program, X_OK) != 0) FAIL() << program << " is not installed";
    }
    std::filesystem::create_directories(home / "calendars");
    std::filesystem::create_directories(home / "run");
    std::filesystem::permissions(home / "run", std::filesystem::perms::owner_all);
    variables["XDG_RUNTIME_DIR"] = home / "run";
    variables["GSETTINGS_BACKEND"] = "memory";
    variables["GIO_USE_VFS"] = "local";
    variables["NO_AT_BRIDGE"] = "1";
    variables["GDK_BACKEND"] = "x11";

    screen_ = start("/usr/bin/Xvfb", {"-displayfd", "1", "-screen", "0", "1000x800x24", "-nolisten", "tcp"});
    ASSERT_TRUE(waitUntil(patience, [&] { return readFile(screen_->out).ends_with('\n'); }));
    std::string number = readFile(screen_->out);
    number.pop_back();
    variables["DISPLAY"] = ":" + number;

    // What the bus starts gets the bus's own environment.
    home.write("services/desktop.service", "[D-BUS Service]\nName=com.quietlark.heedbanner\nExec=" +
                                               programs() + "/heedbanner-desktop --service\n");
    home.write("bus.conf",
               "<busconfig><type>session</type><servicedir>" + (home / "services").string() +
                   "</servicedir><listen>unix:path=" + (home / "run/bus").string() +
                   "</listen><policy context='default'><allow send_destination='*'/><allow own='*'/>"
                   "<allow eavesdrop='true'/></policy></busconfig>");
    bus_ = start("/usr/bin/dbus-daemon", {"--nofork", "--print-address", "--config-file", home / "bus.conf"});
    // It tells its address once it listens; the socket is there a moment before.
    ASSERT_TRUE(waitUntil(patience, [&] { return readFile(bus_->out).ends_with('\n'); }));
    variables["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + (home / "run/bus").string();
    notifications = std::make_unique<NotificationRecorder>(variables["DBUS_SESSION_BUS_ADDRESS"]);
}

void DesktopJourney::end(const std::optional<Started>& program) {
    if (!program || program->process < 0) return;
    kill(program->process, SIGTERM);
    int status = 0;
    waitpid(program->process, &status, 0);
}

void DesktopJourney::TearDown() {
    if (running) endDesktop();
    notifications.reset();
    end(screen_);
    end(bus_);
}

void DesktopJourney::startDesktop(const Arguments& arguments) {
    const std::string empty = pixels();
    running = start("heedbanner-desktop", arguments);
    ASSERT_TRUE(waitUntil(patience, [&] { return isReachable(); }));
    ASSERT_TRUE(waitForAnotherPicture(empty, patience));
}

bool DesktopJourney::isReachable() {
    return tool({"/usr/bin/xdotool", "search", "--class", "heedbanner"}).exitCode == 0;
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
    const std::string text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:" + title +
                             "\r\nDTSTAMP:20260101T000000Z\r\nDTSTART:" + utc(startsIn) +
                             "\r\nDTEND:" + utc(startsIn + hour) + "\r\nSUMMARY:" + title + "\r\n" +
                             std::string(lines) + "END:VEVENT\r\nEND:VCALENDAR\r\n";
    const auto written = home.write("new-file", text);
    std::filesystem::rename(written, home / ("calendars/" + file));
}

void DesktopJourney::setUpCalendars() {
    constexpr int threeDays = 3 * 24 * 3600;
    writeEvent("base.ics", "Base", threeDays);
    ASSERT_EQ(companion({"setup", home / "calendars", "--yes"}).exitCode, 0);
}

Outcome DesktopJourney::tool(const Arguments& command) {
    return run(command.front(), Arguments(command.begin() + 1, command.end()));
}

std::string DesktopJourney::picture() {
    std::string last = pixels();
    waitUntil(patience, [&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(400));
        const std::string before = std::exchange(last, pixels());
        return before == last;
    });
    return last;
}

std::string DesktopJourney::pixels() {
    return tool({"/usr/bin/xwd", "-root", "-silent"}).out;
}

bool DesktopJourney::waitForAnotherPicture(const std::string& before, double seconds) {
    return waitUntil(seconds, [&] { return pixels() != before; });
}

void DesktopJourney::click(int x, int y) {
    tool({"/usr/bin/xdotool", "mousemove", std::to_string(x), std::to_string(y), "click", "1"});
}

bool DesktopJourney::hasWindow(const std::string& title) {
    return tool({"/usr/bin/xdotool", "search", "--onlyvisible", "--name", title}).exitCode == 0;
}

bool DesktopJourney::waitForWindow(const std::string& title) {
    return waitUntil(patience, [&] { return hasWindow(title); });
}

void DesktopJourney::closeWindow(const std::string& title) {
    tool({"/usr/bin/xdotool", "search", "--onlyvisible", "--name", title, "windowfocus", "--sync", "key",
          "Escape"});
}

void DesktopJourney::askOverTheBus(const std::string& action) {
    const std::string name = "com.quietlark.heedbanner";
    EXPECT_EQ(tool({"/usr/bin/gdbus", "call", "--session", "--dest", name, "--object-path",
                    "/com/quietlark/heedbanner", "--method", "org.freedesktop.Application.ActivateAction",
                    action, "[]", "{}"})
                  .exitCode,
              0);
}

bool DesktopJourney::waitUntilGone() {
    return waitUntil(patience, [&] {
        return tool({"/usr/bin/gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                     "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.NameHasOwner",
                     "com.quietlark.heedbanner"})
                   .out == "(false,)\n";
    });
}

}  // namespace test
