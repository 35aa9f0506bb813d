#pragma once

#include <Desktop/WidgetPlacement.h>
#include <System/Environment.h>
#include <System/PendingChanges.h>
#include <Views/WidgetFamily.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace hbr {

/// A widget that the user put on the desktop.
struct PlacedWidget {
    /// "countdown", "upcoming", "current".
    std::string name;
    platform::WidgetFamily family = platform::WidgetFamily::systemMedium;
    platform::WidgetPlacement placement;
    /// The file's table that it was read from, counted from 0; nothing for a new one.
    std::optional<std::size_t> table;

    friend bool operator==(const PlacedWidget&, const PlacedWidget&) = default;
};

/// Which alerts come through while the desktop holds notifications back.
enum class UrgentAlerts { soon, always, never };

/// What the user chose for the desktop, in `desktop.toml` of the configuration directory: a table [[widget]]
/// for each widget (name, family, corner, output, order, x, y) and
///   notifications = false   no desktop notification when an alert is due
///   urgent = "soon"         which notifications come through while others are held back: "always", "never",
///                           or "soon", those of an event that begins within a minute
///   scale = 1.25            logical pixels per point, before the desktop's text scaling
/// A bad entry is left out with a diagnostic that names file and field. Writing keeps it, unknown keys and
/// comments. A file that is not TOML is set aside before the first write.
class PlacementsFile {
  public:
    explicit PlacementsFile(platform::EnvironmentRef environment);

    struct Contents {
        std::vector<PlacedWidget> widgets;
        bool showsNotifications = true;
        UrgentAlerts urgent = UrgentAlerts::soon;
        double scale = 1.25;
        /// The file is there and could not be read.
        bool isBroken = false;
    };

    std::filesystem::path path() const;
    Contents load() const;
    using Change = std::function<void(std::vector<PlacedWidget>& widgets)>;
    /// False when it could not be written; the reason goes to the diagnostics. Takes a lock, so that two
    /// programs lose nothing of each other. Where writes are deferred, `change` may be called again later,
    /// on another thread, so it owns what it captures.
    bool update(const Change& change) const;

  private:
    using Changes = platform::PendingChanges<std::vector<PlacedWidget>>;

    platform::EnvironmentRef environment_;
    std::shared_ptr<Changes> changes_;
};

/// A new widget at the end of the column of its corner.
PlacedWidget placedWidget(std::string name, platform::WidgetFamily family, platform::Corner corner,
                          std::string output, const std::vector<PlacedWidget>& others);

}  // namespace hbr
