#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace doubling {

/// A file that grows with `size`: twice the size, about twice the bytes in one place of it.
struct Case {
    enum class Kind { calendar, card };

    std::string name;
    Kind kind = Kind::calendar;
    /// Beyond it a limit of the reader would cut what grows.
    std::size_t largest = 0;
    std::function<std::string(std::size_t size)> file;
};

/// Every property and parameter of a calendar item and of a card, and what surrounds them.
std::vector<Case> calendarCases();
std::vector<Case> cardCases();

}  // namespace doubling
