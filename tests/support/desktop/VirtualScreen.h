#pragma once

#include <support/desktop/ChildProcess.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace test {

/// A picture of the screen, 0xRRGGBB a pixel.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    std::uint32_t at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
    /// Of a PNG file, its transparent parts on `ground`.
    static Picture ofPng(const std::filesystem::path& file, std::uint32_t ground);
    Picture part(int x, int y, int partWidth, int partHeight) const;
    /// How many pixels differ by more than `tolerance` in a channel.
    int differences(const Picture& other, int tolerance = 8) const;
};

/// Whether two colours differ by no more than `tolerance` in each channel.
bool isNear(std::uint32_t a, std::uint32_t b, int tolerance = 8);

/// An X server without a screen, with hands on its pointer and keyboard.
class VirtualScreen {
  public:
    VirtualScreen(int width, int height, const Variables& variables, const std::filesystem::path& folder);
    ~VirtualScreen();

    /// For DISPLAY.
    const std::string& name() const { return name_; }
    Picture picture() const;
    void fillBackground(std::uint32_t color);

    void movePointer(int x, int y);
    /// 1 left, 3 right. Moves there first.
    void click(int x, int y, int button = 1);
    void press(int button = 1);
    void release(int button = 1);
    /// An X name of a key: "Tab", "Return", "Escape", "Menu".
    void key(const std::string& keysym);

    struct Window {
        unsigned long id = 0;
        std::string title;
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
    };
    /// The mapped windows of programs, in stacking order; those inside a window manager's frames included.
    std::vector<Window> windows() const;
    std::vector<Window> windowsTitled(const std::string& title) const;
    /// Of any kind, menus too, but for the tiny ones through which toolkits take the keyboard.
    std::size_t windowCount() const;
    /// The keyboard is in it or in a window inside it.
    bool isFocused(unsigned long window) const;
    void moveWindow(unsigned long window, int x, int y);
    void focusWindow(unsigned long window);
    /// Asks the program to close it.
    void closeWindow(unsigned long window);
    /// Atoms of a property, by name.
    std::vector<std::string> atoms(unsigned long window, const std::string& property) const;

    /// Of the root window, which a window manager sets.
    bool hasProperty(const std::string& property) const;
    /// A compositor of the X server runs.
    bool isBlended() const;

  private:
    struct Connection;
    std::unique_ptr<ChildProcess> server_;
    std::string name_;
    std::unique_ptr<Connection> connection_;
};

}  // namespace test
