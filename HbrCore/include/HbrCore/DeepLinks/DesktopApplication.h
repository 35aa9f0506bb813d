#pragma once

// How other programs reach the program that shows the widgets, on the session bus.
namespace hbr::desktopApplication {

inline constexpr const char* identifier = "com.quietlark.heedbanner";

/// Its actions. `open` takes a deep link; `snooze` an event's id and minutes, "until-start" or "clear";
/// `focus` the name of a widget or an empty text; the others nothing.
namespace action {
inline constexpr const char* open = "open";
inline constexpr const char* snooze = "snooze";
inline constexpr const char* reload = "reload";
inline constexpr const char* focus = "focus";
inline constexpr const char* gallery = "gallery";
inline constexpr const char* quit = "quit";
}  // namespace action

inline constexpr const char* untilStart = "until-start";
inline constexpr const char* clear = "clear";

}  // namespace hbr::desktopApplication
