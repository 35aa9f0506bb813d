#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A screen. Lengths are logical pixels of the whole desktop.
struct Output {
    struct Area {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        friend bool operator==(const Area&, const Area&) = default;
    };

    /// As the desktop names its connector: "DP-1".
    std::string name;
    Area geometry;
    /// Without panels, where the desktop reports them; else the geometry.
    Area workArea;
    /// Device pixels per logical pixel.
    int scale = 1;

    friend bool operator==(const Output&, const Output&) = default;
};

/// The outputs that are there now. Main thread.
class Outputs {
  public:
    /// Of the display that the program has opened.
    Outputs();
    ~Outputs();
    Outputs(const Outputs&) = delete;
    Outputs& operator=(const Outputs&) = delete;

    /// The main output first, else in the desktop's order.
    std::vector<Output> all() const;
    /// The named one, else the main one; nothing while there is none.
    std::optional<Output> find(std::string_view name) const;

    /// Called once after any number of changes that come together. Ends with the returned token.
    [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> changed);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace platform
