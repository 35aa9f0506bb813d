#include <MxLogger/MxLogger.h>
#include <System/Environment.h>
#include <System/MainQueue.h>
#include <TimeAndText/DateFormatter.h>

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <deque>
#include <mutex>

namespace hbr {
namespace {

constexpr std::string_view isLoggingKey = "MxLogger.isLogging";

/// Writes the time stamps; made with the first line.
struct Stamps {
    platform::EnvironmentRef environment = platform::Environment::current();
    platform::DateFormatter formatter = platform::DateFormatter::withPattern(
        environment->locale, environment->calendar, "yyyy-MM-dd hh:mm:ss");

    std::string now() const { return formatter.string(environment->now()); }
};

struct LogState {
    std::atomic<bool> isLogging = false;
    std::atomic<MxLogger::Level> minimumLevel = MxLogger::Level::info;
    std::atomic<int> maxLogLines = 1000;
    std::atomic<int> output = STDOUT_FILENO;

    std::mutex wiringMutex;
    std::weak_ptr<LogTarget> target;
    platform::DefaultsDomainRef defaults;

    /// The serial queue: whoever holds it is recording.
    std::mutex queue;
    std::deque<std::string> messages;
};

LogState& state() {
    // Never destroyed: other threads and static objects log until the process is gone.
    static auto* instance = new LogState;
    return *instance;
}

std::string_view marker(MxLogger::Level level) {
    switch (level) {
        case MxLogger::Level::debug:
            return "🟢 DEBUG";
        case MxLogger::Level::info:
            return "🔵 INFO";
        case MxLogger::Level::warning:
            return "🟡 WARNING";
        case MxLogger::Level::error:
            return "🔴 ERROR";
    }
    return "";
}

std::string formatted(std::string_view message, MxLogger::Level level,
                      const std::optional<LogCategory>& category) {
    static const auto* stamps = new Stamps;
    std::string line = stamps->now();
    (line += ' ') += marker(level);
    if (category) ((line += " [") += category->name) += ']';
    (line += ": ") += message;
    return line;
}

void print(const std::string& line) {
    std::string text = line + '\n';
    int descriptor = state().output;
    if (descriptor == STDOUT_FILENO) {
        std::fwrite(text.data(), 1, text.size(), stdout);
        std::fflush(stdout);
        return;
    }
    for (std::string_view rest = text; !rest.empty();) {
        ssize_t count = write(descriptor, rest.data(), rest.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return;
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
}

void notifyTarget() {
    if (auto target = MxLogger::logTarget()) target->logTextDidChange(MxLogger::logString());
}

platform::DefaultsDomainRef defaults() {
    std::lock_guard lock(state().wiringMutex);
    return state().defaults;
}

}  // namespace

std::optional<MxLogger::Level> MxLogger::levelFromRawValue(int rawValue) {
    if (rawValue < static_cast<int>(Level::debug) || rawValue > static_cast<int>(Level::error))
        return std::nullopt;
    return static_cast<Level>(rawValue);
}

void MxLogger::log(std::string_view message, Level level, const std::optional<LogCategory>& category) {
    if (!isLogging() || minimumLevel() > level) return;
    {
        std::lock_guard queue(state().queue);
        auto& messages = state().messages;
        messages.push_back(formatted(message, level, category));
        print(messages.back());
        if (std::ssize(messages) > maxLogLines()) messages.pop_front();
    }
    platform::MainQueue::shared().async(notifyTarget);
}

void MxLogger::debug(const std::optional<LogCategory>& category, std::string_view message) {
    log(message, Level::debug, category);
}
void MxLogger::info(const std::optional<LogCategory>& category, std::string_view message) {
    log(message, Level::info, category);
}
void MxLogger::warning(const std::optional<LogCategory>& category, std::string_view message) {
    log(message, Level::warning, category);
}
void MxLogger::error(const std::optional<LogCategory>& category, std::string_view message) {
    log(message, Level::error, category);
}
void MxLogger::debug(std::string_view message) {
    log(message, Level::debug, std::nullopt);
}
void MxLogger::info(std::string_view message) {
    log(message, Level::info, std::nullopt);
}
void MxLogger::warning(std::string_view message) {
    log(message, Level::warning, std::nullopt);
}
void MxLogger::error(std::string_view message) {
    log(message, Level::error, std::nullopt);
}

void MxLogger::start(bool force) {
    bool isOn = force;
    if (!force) {
        if (auto domain = defaults()) {
            auto stored = domain->value(isLoggingKey);
            isOn = stored && stored->asBool().value_or(false);
        }
    }
    setIsLogging(isOn);
}

void MxLogger::stop() {
    setIsLogging(false);
}

void MxLogger::clear() {
    std::lock_guard queue(state().queue);
    state().messages.clear();
}

std::string MxLogger::logString() {
    std::string text;
    std::lock_guard queue(state().queue);
    for (const std::string& message : state().messages) {
        if (&message != &state().messages.front()) text += '\n';
        text += message;
    }
    return text;
}

std::vector<std::string> MxLogger::logMessages() {
    std::lock_guard queue(state().queue);
    return {state().messages.begin(), state().messages.end()};
}

bool MxLogger::isLogging() {
    return state().isLogging;
}

void MxLogger::setIsLogging(bool isLogging) {
    state().isLogging = isLogging;
    if (auto domain = defaults()) domain->setValue(isLoggingKey, isLogging);
}

MxLogger::Level MxLogger::minimumLevel() {
    return state().minimumLevel;
}
void MxLogger::setMinimumLevel(Level level) {
    state().minimumLevel = level;
}
int MxLogger::maxLogLines() {
    return state().maxLogLines;
}
void MxLogger::setMaxLogLines(int count) {
    state().maxLogLines = count;
}

std::shared_ptr<LogTarget> MxLogger::logTarget() {
    std::lock_guard lock(state().wiringMutex);
    return state().target.lock();
}

void MxLogger::setLogTarget(std::weak_ptr<LogTarget> target) {
    std::lock_guard lock(state().wiringMutex);
    state().target = std::move(target);
}

void MxLogger::setDefaults(platform::DefaultsDomainRef domain) {
    std::lock_guard lock(state().wiringMutex);
    state().defaults = std::move(domain);
}

void MxLogger::setOutput(int fileDescriptor) {
    state().output = fileDescriptor;
}

}  // namespace hbr
