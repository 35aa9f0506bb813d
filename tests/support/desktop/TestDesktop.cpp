#include "TestDesktop.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace test {

namespace {

/// A session bus without the services that happen to be installed, portals for instance: it starts the
/// accessibility bus and what the user's own data directory offers.
std::string busConfiguration(const TemporaryDirectory& home) {
    const auto services = home / "data/dbus-1/services";
    std::filesystem::create_directories(services);
    std::filesystem::create_symlink("/usr/share/dbus-1/services/org.a11y.Bus.service",
                                    services / "org.a11y.Bus.service");
    return home.write("bus.conf",
                      "<busconfig><type>session</type><listen>unix:dir=" + (home / "run").string() +
                          "</listen><auth>EXTERNAL</auth><servicedir>" + services.string() +
                          "</servicedir><policy context='default'>"
                          "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/>"
                          "<allow own='*'/></policy></busconfig>\n");
}

/// Only Inter, without the user's and the machine's wishes about fonts.
std::string fontConfiguration(const TemporaryDirectory& home) {
    return home.write("fonts.conf", "<fontconfig><dir>/usr/share/fonts/opentype/inter</dir><cachedir>" +
                                        (home / "cache/fonts").string() + "</cachedir></fontconfig>\n");
}

/// A socket or file whose name begins so.
std::optional<std::filesystem::path> find(const std::filesystem::path& folder, std::string_view beginning) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename();
        if (name.starts_with(beginning) && !name.ends_with(".lock")) return entry.path();
    }
    return std::nullopt;
}

std::filesystem::path awaited(const std::filesystem::path& folder, std::string_view beginning) {
    std::optional<std::filesystem::path> found;
    if (!waitUntil([&] { return (found = find(folder, beginning)).has_value(); }))
        throw std::runtime_error("no " + std::string(beginning) + " appeared");
    return *found;
}

}  // namespace

TestDesktop::TestDesktop() {
    for (const char* folder : {"config", "data", "cache", "state", "run"})
        std::filesystem::create_directories(home_ / folder);
    std::filesystem::permissions(home_ / "run", std::filesystem::perms::owner_all);
    variables = variablesFor(home_);
    variables["XDG_RUNTIME_DIR"] = home_ / "run";
    variables["XDG_DATA_DIRS"] = "/usr/share";
    variables["GSETTINGS_BACKEND"] = "memory";
    variables["GIO_USE_VFS"] = "local";
    variables["FONTCONFIG_FILE"] = fontConfiguration(home_);
    screen_ = std::make_unique<VirtualScreen>(width, height, variables, home_.path());
    screen_->fillBackground(background);
    variables["DISPLAY"] = screen_->name();
    // The bus hands its environment to the services that it starts.
    bus_ =
        start({"dbus-daemon", "--config-file=" + busConfiguration(home_), "--nofork", "--print-address=1"});
    variables["DBUS_SESSION_BUS_ADDRESS"] = bus_->waitForLine("unix:").value_or("");
}

TestDesktop::~TestDesktop() {
    wayland_.reset();
    blending_.reset();
    windowManager_.reset();
    screen_.reset();
}

std::unique_ptr<ChildProcess> TestDesktop::start(std::vector<std::string> command) {
    const auto log = home_ / ("errors-" + std::to_string(++count_));
    return std::make_unique<ChildProcess>(std::move(command), variables, log);
}

std::string TestDesktop::run(std::vector<std::string> command) {
    const auto process = start(std::move(command));
    std::string output = process->readToEnd();
    EXPECT_EQ(process->end(), 0) << process->errors();
    return output;
}

void TestDesktop::startWindowManager() {
    windowManager_ = start({"openbox", "--sm-disable"});
    const auto isRunning = [this] { return screen_->hasProperty("_NET_SUPPORTING_WM_CHECK"); };
    if (!waitUntil(isRunning)) throw std::runtime_error("no window manager: " + windowManager_->errors());
}

void TestDesktop::startBlending() {
    blending_ = start({"picom", "--backend", "xrender", "--config", "/dev/null"});
    if (!waitUntil([this] { return screen_->isBlended(); }))
        throw std::runtime_error("nothing blends: " + blending_->errors());
}

void TestDesktop::stopBlending() {
    blending_.reset();
    waitUntil([this] { return !screen_->isBlended(); });
    screen_->fillBackground(background);
}

void TestDesktop::startWayland(int outputs) {
    screen_ = std::make_unique<VirtualScreen>(width * outputs, height, variables, home_.path());
    variables["DISPLAY"] = screen_->name();
    const auto configuration = home_.write(
        "sway",
        "xwayland disable\noutput * bg #336633 solid_color\ndefault_border none\nseat * hide_cursor 1\n");
    for (const auto& [name, value] : Variables{{"WLR_BACKENDS", "x11"},
                                               {"WLR_X11_OUTPUTS", std::to_string(outputs)},
                                               {"WLR_LIBINPUT_NO_DEVICES", "1"},
                                               {"WLR_RENDERER", "pixman"}})
        variables[name] = value;
    std::vector<std::string> command = {"sway", "-c", configuration};
    // It refuses to run as root, but not as a user that only looks like one from outside.
    if (geteuid() == 0)
        command.insert(command.begin(), {"unshare", "-U", "--map-user=1000", "--map-group=1000", "--"});
    wayland_ = start(command);
    swaySocket_ = awaited(home_ / "run", "sway-ipc.");
    variables["WAYLAND_DISPLAY"] = awaited(home_ / "run", "wayland-").filename();
    variables.erase("DISPLAY");
    for (int number = 1; number <= outputs; ++number)
        placeOutput(number, number);
    // As compositors do, for services that the bus starts.
    run({"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
         "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.UpdateActivationEnvironment",
         "{'DISPLAY': '', 'WAYLAND_DISPLAY': '" + variables["WAYLAND_DISPLAY"] + "'}"});
    screen_->focusWindow(outputWindow(1));
}

void TestDesktop::placeOutput(int number, int place) {
    screen_->moveWindow(outputWindow(number), leftOf(place), 0);
    // The background is drawn by a program of its own, which may be late.
    waitUntil(
        [&] { return isNear(screen_->picture().at(leftOf(place) + width / 2, height / 2), background); });
}

void TestDesktop::addOutput(int number, int place) {
    tellSway({"create_output"});
    placeOutput(number, place);
}

void TestDesktop::startWaylandWithoutLayers(bool withX) {
    wayland_ = start({"weston", "--backend=headless-backend.so", "--socket=wayland-weston", "--idle-time=0"});
    awaited(home_ / "run", "wayland-weston");
    variables["WAYLAND_DISPLAY"] = "wayland-weston";
    if (!withX) variables.erase("DISPLAY");
}

void TestDesktop::tellSway(std::vector<std::string> words) {
    words.insert(words.begin(), {"swaymsg", "-q", "-s", swaySocket_});
    const auto message = start(std::move(words));
    EXPECT_EQ(message->end(), 0) << message->errors();
}

std::string TestDesktop::swayTree() {
    return run({"swaymsg", "-s", swaySocket_, "-t", "get_tree"});
}

unsigned long TestDesktop::outputWindow(int number) {
    const std::string title = "wlroots - X11-" + std::to_string(number);
    std::vector<VirtualScreen::Window> found;
    if (!waitUntil([&] { return !(found = screen_->windowsTitled(title)).empty(); }))
        throw std::runtime_error("sway has no output " + std::to_string(number) + ": " + wayland_->errors());
    return found.front().id;
}

void TestDesktop::removeOutput(int number) {
    screen_->closeWindow(outputWindow(number));
    const std::string title = "wlroots - X11-" + std::to_string(number);
    EXPECT_TRUE(waitUntil([&] { return screen_->windowsTitled(title).empty(); }));
}

std::string TestDesktop::program(const std::string& name) {
    return (std::filesystem::path(PROGRAMS) / name).string();
}

std::string TestDesktop::script(const std::string& name) {
    return (std::filesystem::path(SCRIPTS) / name).string();
}

}  // namespace test
