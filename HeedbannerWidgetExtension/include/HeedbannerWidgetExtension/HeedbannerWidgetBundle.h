#pragma once

#include <HbrCore/CoreServices.h>
#include <WidgetHost/WidgetBundle.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// Countdown, upcoming and current events. Used on the main thread.
class HeedbannerWidgetBundle final : public platform::WidgetBundle {
  public:
    /// Makes or finds the process's core when entries are asked for, not before.
    using Services = std::function<CoreServices&()>;

    /// However many bundles there are, an announced reload asks once a kind for new timelines.
    HeedbannerWidgetBundle(platform::EnvironmentRef environment, Services services);
    /// With demonstration events; reads and writes no setting and no calendar.
    static std::unique_ptr<HeedbannerWidgetBundle> demonstration(platform::EnvironmentRef environment);
    ~HeedbannerWidgetBundle() override;

    std::vector<platform::StaticConfiguration> body() const override;
    /// "countdown", "upcoming", "current".
    std::string shortName(std::string_view kind) const override;
    std::string localizedText(std::string_view key) const override;
    std::string language() const override;
    void prepareSnapshots(std::function<void()> completion) const override;

  private:
    struct World;
    explicit HeedbannerWidgetBundle(std::shared_ptr<const World> world);
    std::shared_ptr<const World> world_;
};

}  // namespace hbr
