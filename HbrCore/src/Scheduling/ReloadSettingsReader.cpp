#include "ReloadSettingsReader.h"

#include <HbrCore/Stores/UserSettingsStore.h>

#include <utility>

namespace hbr {

ReloadSettingsReader::Stored ReloadSettingsReader::stored() const {
    return {settings_.domains().shared->snapshot(), eventSettings_.defaults()->snapshot()};
}

std::shared_ptr<const ReloadSettings> ReloadSettingsReader::read() {
    // Taken before reading: what is written meanwhile is read again with the next question.
    auto stored = this->stored();
    std::lock_guard lock(mutex_);
    if (!last_ || stored != stored_) {
        last_ = std::make_shared<const ReloadSettings>(ReloadSettings::of(settings_, eventSettings_));
        stored_ = std::move(stored);
    }
    return last_;
}

}  // namespace hbr
