#pragma once

#include <Desktop/DesktopSession.h>
#include <TimeAndText/Date.h>
#include <TimeAndText/Url.h>
#include <Values/Color.h>
#include <Values/ImageBytes.h>

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
        /// The window stays, for what `chosen` shows in it.
        bool keepsOpen = false;
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
    /// The last button, set apart from the others, for instance to leave the event out.
    std::optional<Choice> aside;

    /// When the card would say something else; the owner then sets another one.
    std::optional<Date> changesAt = std::nullopt;
};

/// How a card comes to the screen.
struct CardArrival {
    /// Nobody asked for it: it leaves the keyboard where it is and has no default button.
    bool isByItself = false;
    /// Such a card takes no keys before so many seconds have passed without one.
    double keyDelay = 0;
};

/// A window with a card, in front and, where the user asked for it, with the keyboard; the answer to a click
/// opens near the click where windows can be placed. Escape closes it; so does a button after it was
/// pressed. Main thread.
class CardWindow {
  public:
    struct Actions {
        /// A link of the place or the notes.
        std::function<void(const Url&)> open;
        /// Destroying the window is allowed inside the call.
        std::function<void()> closed;
    };

    static std::unique_ptr<CardWindow> show(DesktopSession& session, Card card, Actions actions,
                                            CardArrival arrival = {});
    virtual ~CardWindow() = default;

    /// Where only texts of lines differ, the focus, the scrolled place and an open menu stay.
    virtual void setCard(Card card) = 0;
    /// The user asked for it.
    virtual void present() = 0;
};

}  // namespace platform
