#pragma once

#include <System/Environment.h>
#include <Views/Geometry.h>

#include <memory>
#include <string>

namespace platform {

/// The symbols ("symbols/NAME.svg") and pictures ("pictures/NAME.svg") of the environment's resource
/// folders, read once and rasterised once per size. A file that is missing or not an SVG gives one diagnostic
/// and draws nothing. Safe from any thread.
class PictureLibrary {
  public:
    explicit PictureLibrary(EnvironmentRef environment);
    ~PictureLibrary();

    /// Size that the file gives itself; 18 × 18 when it cannot be read.
    Size intrinsicSize(const std::string& folder, const std::string& name) const;

    struct State;
    State& state() const { return *state_; }

  private:
    std::unique_ptr<State> state_;
};

}  // namespace platform
