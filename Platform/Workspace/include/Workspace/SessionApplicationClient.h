#pragma once

#include <TimeAndText/Url.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// How other processes reach a `SessionApplication`. Any thread; each call waits for the bus.
class SessionApplicationClient {
  public:
    explicit SessionApplicationClient(std::string identifier) : identifier_(std::move(identifier)) {}

    bool isRunning() const;
    /// Runs, or the bus can start it.
    bool isReachable() const;
    /// Each starts the program where the bus can; why it was not reached, else nothing. That the program
    /// took the message does not say that it could do what it was asked for.
    std::optional<std::string> activate() const;
    std::optional<std::string> activateAction(const std::string& name,
                                              const std::vector<std::string>& parameters = {}) const;
    std::optional<std::string> open(const std::vector<Url>& urls) const;
    /// Has the bus look again for programs that it can start: it does not see a folder that was not there
    /// when the session began.
    static void rereadPrograms();
    /// Runs the main queue until nobody has the name any more; false after `timeoutSeconds`. Main thread.
    bool waitUntilGone(double timeoutSeconds) const;

  private:
    std::string identifier_;
};

}  // namespace platform
