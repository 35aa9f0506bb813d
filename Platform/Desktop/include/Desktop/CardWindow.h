#pragma once

#include <Desktop/DesktopSession.h>
#include <Foundation/Color.h>
#include <Foundation/Date.h>
#include <Foundation/ImageBytes.h>
#include <Foundation/Url.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// What a card says and offers, ready for display. Empty texts and absent functions leave their part out.
struct Card {
    struct Person {
        std::string name;
        /// "Organizer", "Accepted", …
        std::string remark;
        /// Shown where there is no picture.
        std::string initials;
        std::optional<ImageBytes> picture;

        friend bool operator==(const Person&, const Person&) = default;
    };
    struct Choice {
        std::string label;
        std::function<void()> chosen;
    };

    /// Of the calendar.
    std::optional<Color> color;
    std::string title;
    /// One line each: when, calendar, how often …
    std::vector<std::string> lines;
    /// Links in them can be clicked.
    std::string place;
    std::string notes;
    std::string peopleHeading;
    std::vector<Person> people;

    /// The button that stands out, for instance to join a call.
    std::optional<Choice> primary;
    std::vector<Choice> buttons;
    /// A button with a menu, for instance of minutes.
    std::string menuLabel;
    std::vector<Choice> menu;
    /// A button at the far end, for instance to leave the event out.
    std::optional<Choice> aside;

    /// When the card would say something else; the owner then sets another one.
    std::optional<Date> changesAt = std::nullopt;
};

/// A window with a card, in front and with the keyboard. Escape closes it; so does a button after it was
/// pressed. Main thread.
class CardWindow {
  public:
    struct Actions {
        /// A link of the place or the notes.
        std::function<void(const Url&)> open;
        /// Destroying the window is allowed inside the call.
        std::function<void()> closed;
    };

    static std::unique_ptr<CardWindow> show(DesktopSession& session, Card card, Actions actions);
    virtual ~CardWindow() = default;

    /// Where only texts of lines differ, the focus, the scrolled place and an open menu stay.
    virtual void setCard(Card card) = 0;
    virtual void present() = 0;
};

}  // namespace platform
