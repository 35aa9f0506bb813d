#pragma once

#include <WidgetHost/StaticConfiguration.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The widgets of one program.
class WidgetBundle {
  public:
    virtual ~WidgetBundle() = default;

    /// In the order of the gallery.
    virtual std::vector<StaticConfiguration> body() const = 0;
    /// The short name that the command line takes for a kind.
    virtual std::string shortName(std::string_view kind) const = 0;
    /// A text of the gallery in the user's language.
    virtual std::string localizedText(std::string_view key) const = 0;
    /// Language of its texts, as a BCP 47 tag.
    virtual std::string language() const = 0;
    /// Brings what snapshots show up to date, then completes on the main queue.
    virtual void prepareSnapshots(std::function<void()> completion) const = 0;
};

}  // namespace platform
