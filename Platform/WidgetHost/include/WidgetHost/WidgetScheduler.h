#pragma once

#include <TimeAndText/Date.h>
#include <WidgetHost/StaticConfiguration.h>
#include <WidgetHost/WidgetCenter.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Plays the timelines of the widgets that are shown: draws each entry at its date and asks for the next
/// timeline at the policy's date or when somebody asks the widget centre for it. Requests of one kind are
/// merged; while one is under way, any number of further ones lead to one more. A provider that does not
/// answer keeps its widget as it was and is asked again later; the others go on. Wakes at these moments
/// only. Main thread, but for `reloadTimelines`.
class WidgetScheduler final : public WidgetCenter, public std::enable_shared_from_this<WidgetScheduler> {
  public:
    struct World {
        std::function<Date()> clock;
        /// Takes the moment at which to call `wake` next, in place of the moment named before.
        std::function<void(std::optional<Date>)> wakeAt;
        /// An entry takes its place in the widgets of the kind. Called again with the same entry when a new
        /// timeline came: what it shows may depend on the clock and the settings.
        std::function<void(const std::string& kind, const WidgetEntry& entry)> show;
    };

    /// Policy dates wait this long, in seconds, for whatever else asks for the kind at the same minute.
    static constexpr double policySlack = 1;
    /// A request that took longer, in seconds, no longer holds up the next one.
    static constexpr double patience = 30;

    static std::shared_ptr<WidgetScheduler> make(std::vector<StaticConfiguration> widgets, World world);
    ~WidgetScheduler() override;

    /// These kinds are on the screen from now on; those that were not are asked for a timeline at once.
    void setShownKinds(const std::vector<std::string>& kinds);
    /// What the kind shows now; nothing before its first timeline.
    std::optional<WidgetEntry> currentEntry(std::string_view kind) const;

    void reloadTimelines(std::string_view ofKind) override;
    void reloadAllTimelines();
    /// The moment that was named to `wakeAt` has come.
    void wake();
    /// The clock was set or the machine slept: shows what belongs here now and asks for new timelines.
    void clockChanged();

  private:
    WidgetScheduler(std::vector<StaticConfiguration> widgets, World world);
    struct Kind;
    struct Requests;

    Kind* find(std::string_view kind);
    void drainRequests();
    void ask(Kind& kind);
    void take(Kind& kind, std::uint64_t request, WidgetTimeline timeline);
    void show(Kind& kind, bool always);
    void scheduleWake();

    World world_;
    std::vector<std::unique_ptr<Kind>> kinds_;
    std::unique_ptr<Requests> requests_;
    std::optional<Date> wakeDate_;
};

}  // namespace platform
