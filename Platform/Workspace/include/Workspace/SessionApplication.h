#pragma once

#include <TimeAndText/Url.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// A program of which one runs in a session. It owns a name on the session bus and is reached there by
/// others through org.freedesktop.Application and org.gtk.Actions. Main thread; messages arrive through the
/// main queue's loop.
class SessionApplication {
  public:
    struct Action {
        std::string name;
        /// All of them texts.
        std::size_t parameterCount = 0;
        std::function<void(const std::vector<std::string>& parameters)> run;
    };
    struct Options {
        /// The name on the bus, "com.example.Program".
        std::string identifier;
        std::vector<Action> actions;
        /// Somebody started the program again, or the bus started it.
        std::function<void()> activate;
        /// URLs that were handed to it.
        std::function<void(const std::vector<Url>& urls)> open;
        /// Before each of these: what the caller's desktop gave for a window to come to the front, or
        /// nothing.
        std::function<void(const std::string& token)> useActivationToken;
    };

    enum class Claim {
        first,
        /// Another process has the name.
        taken,
        /// Nobody can reach this process, and it cannot know whether it is the only one.
        noBus,
    };
    struct Claimed {
        Claim claim = Claim::noBus;
        /// Present for `first` only.
        std::unique_ptr<SessionApplication> application;
    };
    static Claimed claim(Options options);

    /// Gives the name back.
    ~SessionApplication();
    SessionApplication(const SessionApplication&) = delete;
    SessionApplication& operator=(const SessionApplication&) = delete;

    struct State;

  private:
    explicit SessionApplication(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace platform
