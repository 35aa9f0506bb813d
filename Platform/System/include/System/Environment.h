#pragma once

#include <System/Diagnostics.h>
#include <TimeAndText/Calendar.h>
#include <TimeAndText/Date.h>
#include <TimeAndText/Locale.h>
#include <Values/DerivedValues.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace platform {

struct PlatformVersion {
    int major = 14;
    int minor = 0;
    int patch = 0;

    friend auto operator<=>(const PlatformVersion&, const PlatformVersion&) = default;
};

/// Everything a process takes from the world around it, in one replaceable value. Made once by `main`
/// (Environment::fromProcess) or by a test, then handed down and never changed.
struct Environment {
    /// Names the product in paths: "$XDG_CONFIG_HOME/<productName>/…".
    std::string productName = "heedbanner";
    std::string programName;
    PlatformVersion platformVersion;

    std::function<Date()> clock;
    Calendar calendar{TimeZone::utc()};
    Locale locale;

    /// Already the product's own folders; they need not exist.
    std::filesystem::path configDirectory;
    std::filesystem::path dataDirectory;
    std::filesystem::path cacheDirectory;
    std::filesystem::path homeDirectory;
    std::filesystem::path zoneInfoDirectory = "/usr/share/zoneinfo";
    /// Where resource bundles and shipped files are looked for, first match wins.
    std::vector<std::filesystem::path> resourceDirectories;

    std::shared_ptr<DiagnosticsSink> diagnostics = std::make_shared<CollectedDiagnostics>();

    DerivedValues derived = {};

    Date now() const { return clock(); }

    /// The real world: system clock, TZ or /etc/localtime, LANGUAGE/LC_*/LANG, the desktop's choice of a
    /// 12 or 24 hour clock, XDG directories.
    /// `programPath` is the program's file, links resolved. Resources are looked for in the variable
    /// PRODUCTNAME_RESOURCES (upper case, absolute), share/productName under the program's prefix, the
    /// further directories (a build's own), the program's folder. What cannot be read is reported to
    /// `diagnostics`, which the environment keeps; without one it collects them itself.
    static std::shared_ptr<const Environment> fromProcess(
        std::string productName, const std::filesystem::path& programPath,
        std::vector<std::filesystem::path> furtherResourceDirectories = {},
        std::shared_ptr<DiagnosticsSink> diagnostics = nullptr);

    /// The process's default wiring, used by the `shared()` instances. Set once, before the first of them
    /// is made; reading it before that gives fromProcess("heedbanner", …).
    static std::shared_ptr<const Environment> current();
    static void setCurrent(std::shared_ptr<const Environment> environment);
};

using EnvironmentRef = std::shared_ptr<const Environment>;

/// Where the running program lies; `name` (its argv[0]) where the system does not say.
std::filesystem::path programPath(const char* name);

}  // namespace platform
