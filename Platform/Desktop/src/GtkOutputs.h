#pragma once

#include <Desktop/Outputs.h>
#include <gtk/gtk.h>

#include <vector>

#include "GObjects.h"
#include "Observers.h"

namespace platform {

class GtkOutputs final : public Outputs {
  public:
    explicit GtkOutputs(GdkDisplay* display);
    ~GtkOutputs() override;

    std::vector<Output> all() const override;
    std::shared_ptr<void> observe(std::function<void()> changed) override;

    /// The toolkit's monitor of that name; nullptr when it went away meanwhile.
    GdkMonitor* monitor(std::string_view name) const;

  private:
    void watchMonitors();
    void changed();
    Output describe(int index) const;

    GdkDisplay* display_;
    std::vector<SignalConnection> displaySignals_;
    std::vector<SignalConnection> monitorSignals_;
    Observers observers_;
    guint pending_ = 0;
};

}  // namespace platform
