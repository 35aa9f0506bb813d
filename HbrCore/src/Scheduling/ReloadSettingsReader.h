#pragma once

#include <HbrCore/Scheduling/ReloadSettings.h>
#include <Values/PropertyValue.h>

#include <memory>
#include <mutex>

namespace hbr {

/// Reads the settings of a reload again only after something was written. Safe from any thread.
class ReloadSettingsReader {
  public:
    ReloadSettingsReader(const UserSettingsStore& settings, const EventSettingsStore& eventSettings)
        : settings_(settings), eventSettings_(eventSettings) {}

    /// What the stores' domains hold now; equal as long as nothing was written, own reminders among it.
    struct Stored {
        std::shared_ptr<const platform::PropertyDictionary> settings;
        std::shared_ptr<const platform::PropertyDictionary> eventSettings;
        friend bool operator==(const Stored&, const Stored&) = default;
    };
    Stored stored() const;

    /// Of what is stored now: the same object as long as nothing was written.
    std::shared_ptr<const ReloadSettings> read();

  private:
    const UserSettingsStore& settings_;
    const EventSettingsStore& eventSettings_;
    std::mutex mutex_;
    Stored stored_;
    std::shared_ptr<const ReloadSettings> last_;
};

}  // namespace hbr
