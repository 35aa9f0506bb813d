#pragma once

#include <HbrCore/CoreServices.h>
#include <HeedbannerWidgetExtension/WidgetStrings.h>
#include <WidgetHost/WidgetBundle.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// Countdown, upcoming and current events. Made on the main thread.
class HeedbannerWidgetBundle final : public platform::WidgetBundle {
  public:
    /// Over the services of the process.
    explicit HeedbannerWidgetBundle(std::shared_ptr<CoreServices> services);
    /// With demonstration events; reads and writes no setting and no calendar.
    static std::unique_ptr<HeedbannerWidgetBundle> demonstration(platform::EnvironmentRef environment);
    ~HeedbannerWidgetBundle() override;

    std::vector<platform::StaticConfiguration> body() const override;
    /// "countdown", "upcoming", "current".
    std::string shortName(std::string_view kind) const override;
    std::string localizedText(std::string_view key) const override;
    void prepareSnapshots(std::function<void()> completion) const override;

  private:
    struct World;
    explicit HeedbannerWidgetBundle(std::shared_ptr<const World> world);
    std::shared_ptr<const World> world_;
};

}  // namespace hbr
