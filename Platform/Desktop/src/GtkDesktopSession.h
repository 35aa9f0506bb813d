#pragma once

#include <Desktop/DesktopSession.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "GtkAppearance.h"
#include "GtkOutputs.h"
#include "Observers.h"

namespace platform {

class GtkDesktopSession final : public DesktopSession {
  public:
    GtkDesktopSession(SurfaceKind kind, GdkDisplay* display);

    void useActivationToken(const std::string& token) override { activationToken_ = token; }
    /// Empty where there is none; each is good for one window.
    std::string takeActivationToken() { return std::exchange(activationToken_, {}); }

    const DesktopCapabilities& capabilities() const override { return capabilities_; }
    GtkOutputs& outputs() override { return outputs_; }
    const GtkOutputs& outputs() const { return outputs_; }
    GtkAppearance& appearance() override { return appearance_; }

    /// A window wants the front and the keyboard, which lifted widgets would keep from it.
    void aboutToPresentWindow() { presenting_.notify(); }
    [[nodiscard]] std::shared_ptr<void> observePresenting(std::function<void()> presenting) {
        return presenting_.add(std::move(presenting));
    }

  private:
    DesktopCapabilities capabilities_;
    GtkOutputs outputs_;
    GtkAppearance appearance_;
    Observers presenting_;
    std::string activationToken_;
};

}  // namespace platform
