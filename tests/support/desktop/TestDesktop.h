#pragma once

#include <support/TemporaryDirectory.h>
#include <support/desktop/ChildProcess.h>
#include <support/desktop/VirtualScreen.h>

#include <memory>
#include <string>
#include <vector>

namespace test {

/// A user's desktop in a home of its own: a private session bus with services of its own, fonts of its own
/// (Inter), and a virtual screen, on it nothing, or a
/// window manager, or a Wayland compositor whose outputs are windows of that screen.
class TestDesktop {
  public:
    /// Of the virtual screen, which is the whole desktop but for Wayland.
    static constexpr int width = 1024, height = 768;
    static constexpr std::uint32_t background = 0x336633;

    TestDesktop();
    ~TestDesktop();

    /// Openbox.
    void startWindowManager();
    /// Picom: windows are blended with what is behind them.
    void startBlending();
    void stopBlending();
    /// Sway, with outputs X11-1, X11-2 … side by side, each as large as the screen was said to be. From then
    /// on programs see the Wayland desktop only.
    void startWayland(int outputs = 1);
    /// Weston, which has no layer-shell. Programs see the X screen too if `withX` says so.
    void startWaylandWithoutLayers(bool withX);

    VirtualScreen& screen() { return *screen_; }
    /// Of sway. Waits for its answer.
    void tellSway(std::vector<std::string> words);
    /// Its windows, as JSON.
    std::string swayTree();
    /// The screen's window that is an output of sway.
    unsigned long outputWindow(int number);
    void removeOutput(int number);
    /// One more, which gets the next number that never was, in the place of another one that went.
    void addOutput(int number, int place);
    /// The left edge of an output on the virtual screen.
    static int leftOf(int number) { return (number - 1) * width; }

    /// Files of the programs: config, data, cache …
    const TemporaryDirectory& home() const { return home_; }
    /// The environment in which programs of this desktop run; may be added to.
    Variables variables;

    std::unique_ptr<ChildProcess> start(std::vector<std::string> command);
    /// Runs to the end; its output.
    std::string run(std::vector<std::string> command);

    /// A program of the build.
    static std::string program(const std::string& name);
    /// A script beside this file.
    static std::string script(const std::string& name);

  private:
    void placeOutput(int number, int place);

    TemporaryDirectory home_;
    std::unique_ptr<ChildProcess> bus_;
    std::unique_ptr<VirtualScreen> screen_;
    std::unique_ptr<ChildProcess> windowManager_;
    std::unique_ptr<ChildProcess> blending_;
    std::unique_ptr<ChildProcess> wayland_;
    std::string swaySocket_;
    int count_ = 0;
};

}  // namespace test
