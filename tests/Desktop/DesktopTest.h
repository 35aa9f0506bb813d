#pragma once

#include <gtest/gtest.h>
#include <support/desktop/TestDesktop.h>

#include <initializer_list>
#include <memory>
#include <string>

namespace test {

/// The program that shows fixed widgets, on a desktop of its own.
class DesktopTest : public ::testing::Test {
  protected:
    static constexpr std::uint32_t background = TestDesktop::background;

    /// `widgets`: "FAMILY CORNER OUTPUT X Y" each; their timers count to an hour from now, or to `seconds`
    /// from now.
    void show(std::initializer_list<std::string> widgets, int seconds = 3600) {
        std::vector<std::string> command = {TestDesktop::program("desktop-test-program"),
                                            std::to_string(seconds)};
        command.insert(command.end(), widgets);
        program = desktop.start(std::move(command));
        surfaces = program->waitForLine("surfaces").value_or("");
        program->waitForLine("ready");
    }

    /// Ends the program in peace.
    void TearDown() override {
        if (!program) return;
        EXPECT_EQ(program->end(), 0) << program->errors();
    }

    VirtualScreen& screen() { return desktop.screen(); }

    /// A widget of the program, seen on the screen from its top left corner.
    struct Place {
        int x = 0;
        int y = 0;
    };
    static constexpr std::uint32_t container = 0xF7F7F9, darkContainer = 0x1F1F24;
    static constexpr int mediumWidth = 455, mediumHeight = 213, smallWidth = 213, smallHeight = 213;
    /// 20 pixels from the corner.
    static constexpr Place topEnd{TestDesktop::width - 20 - mediumWidth, 20};
    /// In a medium widget.
    static constexpr Place ground{200, 20}, firstRow{150, 77}, secondRow{150, 136}, camera{405, 77};

    std::uint32_t colorAt(Place widget, Place inside) {
        return screen().picture().at(widget.x + inside.x, widget.y + inside.y);
    }
    bool isSeenAt(Place widget, std::uint32_t color = container) {
        return waitUntil([&] { return isNear(colorAt(widget, ground), color); });
    }
    void showMedium(int seconds = 3600) {
        show({"medium top-end"}, seconds);
        ASSERT_TRUE(isSeenAt(topEnd));
    }
    bool isGoneFrom(Place widget) {
        return waitUntil([&] { return isNear(colorAt(widget, ground), background); });
    }
    /// The keyboard's focus is seen around the row, in the primary colour.
    bool isRingAt(Place widget, int rowMiddle) {
        return waitUntil([&] {
            const Picture picture = screen().picture();
            const auto at = [&](int x, int y) { return picture.at(widget.x + x, widget.y + y); };
            // A window that was mapped a moment ago is black all over.
            return isNear(at(ground.x, ground.y), container) && isNear(at(16, rowMiddle), 0x1B1B1F, 60);
        });
    }
    void click(Place widget, Place inside, int button = 1) {
        screen().click(widget.x + inside.x, widget.y + inside.y, button);
    }

    TestDesktop desktop;
    std::unique_ptr<ChildProcess> program;
    std::string surfaces;
};

}  // namespace test
