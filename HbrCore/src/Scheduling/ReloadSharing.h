#pragma once

#include <TimeAndText/Calendar.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "ReloadSettingsReader.h"

namespace hbr {

/// What the answer of a reload depends on beside the clock.
struct ReloadInputs {
    ReloadSettingsReader::Stored stored;
    std::uint64_t storeRevision = 0;
    /// Counts what else changed: snoozes, handled alerts, announced changes.
    std::uint64_t changes = 0;
    friend bool operator==(const ReloadInputs&, const ReloadInputs&) = default;
};

/// Answers a request with the newest reload, if that is under way or ended within the same second, and
/// nothing changed since it began. Safe from any thread.
class ReloadSharing {
  public:
    using Completion = std::function<void()>;
    /// One reload, from its start until its completions were called.
    struct Round;
    using RoundRef = std::shared_ptr<Round>;

    explicit ReloadSharing(const platform::Calendar& calendar) : calendar_(calendar) {}

    enum class Wanted { anyReload, announcedReload };
    /// True when the newest reload answers: `completion` is then called on the main queue, after it ended.
    bool join(const ReloadInputs& inputs, platform::Date now, Wanted wanted, Completion& completion);

    /// A new reload, the newest from now on.
    RoundRef begin(ReloadInputs inputs, platform::Date now, bool isAnnounced, Completion completion);
    /// A reload of its own kind, which answers nobody else.
    RoundRef beginApart(Completion completion);
    /// The lists are those of that moment.
    void setMoment(const RoundRef& round, platform::Date moment);
    /// The lists that are shown are older than those of the newest reload: it answers nobody any more.
    void forgetNewest();
    /// From now on nobody waits for it; gives the completions to call.
    std::vector<Completion> end(const RoundRef& round);

  private:
    bool answers(const Round& round, const ReloadInputs& inputs, platform::Date now, Wanted wanted) const;

    const platform::Calendar& calendar_;
    std::mutex mutex_;
    RoundRef newest_;
};

struct ReloadSharing::Round {
    ReloadInputs inputs;
    platform::Date start;
    /// Of the lists, once they are worked out.
    std::optional<platform::Date> moment;
    bool isAnnounced = false;
    bool hasEnded = false;
    std::vector<Completion> completions;
};

}  // namespace hbr
