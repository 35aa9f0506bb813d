#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// Messages that the desktop shows for a program (org.freedesktop.Notifications). Main thread; answers
/// arrive through the main queue's loop.
class DesktopNotifications {
  public:
    struct Action {
        std::string key;
        std::string label;

        friend bool operator==(const Action&, const Action&) = default;
    };
    /// The message itself was tapped.
    static constexpr const char* defaultAction = "default";

    struct Notification {
        std::string summary;
        /// Plain text.
        std::string body;
        /// Of the message itself where `opensOnTap`; then as buttons in this order.
        std::vector<Action> actions;
        bool opensOnTap = false;
        /// Stays until the user answers, also while other messages are held back.
        bool isUrgent = false;
        /// New words of a message that was shown before: nothing to look at now, unless it is urgent.
        bool isQuiet = false;

        friend bool operator==(const Notification&, const Notification&) = default;
    };
    /// `activationToken` lets what the user asked for come to the front, where the desktop gave one.
    using Chosen =
        std::function<void(const std::string& key, const std::optional<std::string>& activationToken)>;
    /// The message with this tag could not be shown; one line that says why.
    using Failed = std::function<void(const std::string& tag, const std::string& reason)>;

    /// Withdraws what is shown: nobody is left to answer.
    virtual ~DesktopNotifications() = default;

    /// Takes the place of the message with the same tag.
    virtual void show(const std::string& tag, Notification notification, Chosen chosen) = 0;
    /// New words for the message with this tag. Nothing happens when it is no longer shown.
    virtual void update(const std::string& tag, Notification notification) = 0;
    /// Nothing happens when the user closed it before.
    virtual void withdraw(const std::string& tag) = 0;
    /// All that are shown; returns after the desktop was asked.
    virtual void withdrawAll() = 0;

    /// `desktopEntry` names the program's .desktop file, without the ending.
    static std::unique_ptr<DesktopNotifications> onSessionBus(std::string programName,
                                                              std::string desktopEntry, Failed failed);
};

}  // namespace platform
