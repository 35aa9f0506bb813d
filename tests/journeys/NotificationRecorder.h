#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace test {

/// The notification service of a desktop that only exists for the test: keeps what it is asked to show.
class NotificationRecorder {
  public:
    explicit NotificationRecorder(const std::string& busAddress);
    ~NotificationRecorder();

    struct Notification {
        unsigned id = 0;
        std::string summary;
        std::string body;
        /// Keys of the buttons.
        std::vector<std::string> actions;
        std::vector<std::string> labels;
        /// 0 low, 1 normal, 2 critical; of the first words.
        int urgency = -1;
        bool isClosed = false;
    };
    const std::vector<Notification>& shown() const;
    /// Handles what arrives until there are so many; false when they have not come after `seconds`.
    bool waitFor(std::size_t count, double seconds);
    /// Handles what arrives until `holds`; false when that has not come after `seconds`.
    bool waitUntil(const std::function<bool()>& holds, double seconds);
    /// Handles what arrives for so long.
    void handleFor(double seconds) { waitFor(SIZE_MAX, seconds); }
    /// As if the user pressed the button of all that come, before the service has reported their numbers.
    void pressOnArrival(const std::string& action);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace test
