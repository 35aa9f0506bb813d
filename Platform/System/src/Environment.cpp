#include <System/SystemClock.h>
#include "ProcessLocale.h"
#include "ProcessTimeZone.h"

#include <System/Environment.h>
#include <TimeAndText/Ascii.h>

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <mutex>

namespace platform {
namespace fs = std::filesystem;
namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

fs::path userHome() {
    if (fs::path home = variable("HOME"); home.is_absolute()) return home;
    const passwd* user = getpwuid(getuid());
    return user && user->pw_dir ? fs::path(user->pw_dir) : fs::path("/");
}

/// Relative paths in XDG variables are to be ignored.
fs::path baseDirectory(const char* name, const fs::path& standard) {
    fs::path directory = variable(name);
    return directory.is_absolute() ? directory : standard;
}

std::vector<fs::path> resourceFolders(const std::string& productName, const fs::path& programPath,
                                      std::vector<fs::path> further) {
    std::vector<fs::path> directories;
    const std::string override = asciiUpper(productName) + "_RESOURCES";
    if (fs::path directory = variable(override.c_str()); directory.is_absolute())
        directories.push_back(directory);
    fs::path folder = programPath.parent_path();
    directories.push_back(folder.parent_path() / "share" / productName);
    std::ranges::move(further, std::back_inserter(directories));
    directories.push_back(folder);
    return directories;
}

std::mutex& currentMutex() {
    static auto* mutex = new std::mutex;
    return *mutex;
}

EnvironmentRef& currentEnvironment() {
    // Never destroyed: threads may still read it while the process ends.
    static auto* environment = new EnvironmentRef;
    return *environment;
}

}  // namespace

EnvironmentRef Environment::fromProcess(std::string productName, const fs::path& programPath,
                                        std::vector<fs::path> furtherResourceDirectories,
                                        std::shared_ptr<DiagnosticsSink> diagnostics) {
    auto environment = std::make_shared<Environment>();
    if (diagnostics) environment->diagnostics = std::move(diagnostics);
    environment->programName = programPath.filename().string();
    environment->clock = systemNow;

    const char* tz = std::getenv("TZ");
    environment->calendar = Calendar(processTimeZone(tz ? std::optional<std::string>(tz) : std::nullopt,
                                                     environment->zoneInfoDirectory, "/etc/localtime",
                                                     *environment->diagnostics));
    environment->locale =
        processLocale(variable, [] { return desktopHourCycle(variable("XDG_CURRENT_DESKTOP")); });

    fs::path home = userHome();
    environment->configDirectory = baseDirectory("XDG_CONFIG_HOME", home / ".config") / productName;
    environment->dataDirectory = baseDirectory("XDG_DATA_HOME", home / ".local/share") / productName;
    environment->cacheDirectory = baseDirectory("XDG_CACHE_HOME", home / ".cache") / productName;
    environment->homeDirectory = std::move(home);
    environment->resourceDirectories =
        resourceFolders(productName, programPath, std::move(furtherResourceDirectories));
    environment->productName = std::move(productName);
    return environment;
}

EnvironmentRef Environment::current() {
    std::lock_guard lock(currentMutex());
    EnvironmentRef& environment = currentEnvironment();
    if (!environment) {
        std::error_code ignored;
        environment = fromProcess("heedbanner", fs::read_symlink("/proc/self/exe", ignored));
    }
    return environment;
}

void Environment::setCurrent(EnvironmentRef environment) {
    std::lock_guard lock(currentMutex());
    currentEnvironment() = std::move(environment);
}

std::filesystem::path programPath(const char* name) {
    std::error_code error;
    auto path = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path(name) : path;
}

}  // namespace platform
