#pragma once

#include <gio/gio.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "GObjects.h"

namespace platform {

/// The settings that the desktop offers over the session bus, kept up to date. Main thread.
class PortalSettings {
  public:
    /// Starts the portal where one is installed and waits for its settings, at most a second, so that the
    /// first picture is right. A slower one calls `changed` later.
    explicit PortalSettings(std::function<void()> changed);
    ~PortalSettings();
    PortalSettings(const PortalSettings&) = delete;
    PortalSettings& operator=(const PortalSettings&) = delete;

    std::optional<unsigned> number(std::string_view group, std::string_view key) const;
    std::optional<double> real(std::string_view group, std::string_view key) const;
    std::optional<std::string> text(std::string_view group, std::string_view key) const;

  private:
    void ask(bool shouldWait);
    void take(GVariant* answer);
    void takeOne(const char* group, const char* key, GVariant* value);
    GVariant* value(std::string_view group, std::string_view key, const char* type) const;

    std::function<void()> changed_;
    Object<GDBusConnection> bus_;
    Object<GCancellable> cancellable_{g_cancellable_new()};
    guint subscription_ = 0;
    guint watch_ = 0;
    std::map<std::string, Variant, std::less<>> values_;
};

}  // namespace platform
