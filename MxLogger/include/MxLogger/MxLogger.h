#pragma once

#include <MxLogger/LogCategory.h>
#include <System/DefaultsDomain.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// Watches the log; called on the main thread after every recorded line with the whole text.
class LogTarget {
  public:
    virtual ~LogTarget() = default;
    virtual void logTextDidChange(const std::string& text) = 0;
};

/// The process's diagnostic log: off until started; recent lines stay in memory and go to standard output.
/// Callable from any thread; a call returns after its line is recorded. Lines are stamped with the clock,
/// zone and locale of Environment::current(), captured at the first line.
class MxLogger {
  public:
    enum class Level { debug = 0, info = 1, warning = 2, error = 3 };
    static std::optional<Level> levelFromRawValue(int rawValue);

    MxLogger() = delete;

    static void log(std::string_view message, Level level, const std::optional<LogCategory>& category);
    static void debug(const std::optional<LogCategory>& category, std::string_view message);
    static void info(const std::optional<LogCategory>& category, std::string_view message);
    static void warning(const std::optional<LogCategory>& category, std::string_view message);
    static void error(const std::optional<LogCategory>& category, std::string_view message);
    static void debug(std::string_view message);
    static void info(std::string_view message);
    static void warning(std::string_view message);
    static void error(std::string_view message);

    /// Forced: on. Otherwise as the stored switch says. The result is stored.
    static void start(bool force);
    static void stop();
    /// Forgets the recorded lines; the target is not notified.
    static void clear();

    /// The recorded lines, oldest first, joined with line feeds.
    static std::string logString();
    static std::vector<std::string> logMessages();

    static bool isLogging();
    /// Also stores the switch.
    static void setIsLogging(bool isLogging);
    /// Initially info. Lines below it are dropped.
    static Level minimumLevel();
    static void setMinimumLevel(Level level);
    /// Initially 1000. Above it each further line removes the oldest one.
    static int maxLogLines();
    static void setMaxLogLines(int count);
    static std::shared_ptr<LogTarget> logTarget();
    static void setLogTarget(std::weak_ptr<LogTarget> target);

    /// Where the switch is stored, under "MxLogger.isLogging". Without a domain it is not stored. The
    /// programs give none: their log is on for one run, with `--log`, and never stays on by itself. An
    /// application that offers a switch passes its standard domain and calls start(false) at launch.
    static void setDefaults(platform::DefaultsDomainRef defaults);
    /// Lines go to this file descriptor instead of standard output; the caller keeps it open.
    static void setOutput(int fileDescriptor);
};

}  // namespace hbr
