#include <WidgetHost/WidgetCenter.h>

#include <mutex>
#include <utility>

namespace platform {

namespace {

class DroppingWidgetCenter final : public WidgetCenter {
  public:
    void reloadTimelines(std::string_view) override {}
};

struct Installed {
    std::mutex mutex;
    std::shared_ptr<WidgetCenter> center = std::make_shared<DroppingWidgetCenter>();
};

Installed& installed() {
    static Installed instance;
    return instance;
}

}  // namespace

std::shared_ptr<WidgetCenter> WidgetCenter::shared() {
    std::lock_guard lock(installed().mutex);
    return installed().center;
}

void WidgetCenter::install(std::shared_ptr<WidgetCenter> center) {
    if (!center) center = std::make_shared<DroppingWidgetCenter>();
    std::lock_guard lock(installed().mutex);
    installed().center.swap(center);
}

}  // namespace platform
