#include "Console.h"

#include <Foundation/Text.h>

#include <sys/ioctl.h>
#include <unistd.h>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iostream>

namespace hbr {

namespace {

bool environmentSays(const char* name) {
    const char* value = std::getenv(name);
    return value && *value;
}

bool isDumbTerminal() {
    const char* term = std::getenv("TERM");
    return term && std::string_view(term) == "dumb";
}

struct CodePoint {
    char32_t value = 0;
    std::size_t bytes = 1;
};

/// The first code point of well-formed UTF-8.
CodePoint firstCodePoint(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    const std::size_t count = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (count > text.size()) return {0xFFFD, 1};
    char32_t value = count == 1 ? lead : lead & (0xFFU >> (count + 1));
    for (std::size_t i = 1; i < count; ++i)
        value = (value << 6) | (byte(i) & 0x3FU);
    return {value, count};
}

int columnsOf(char32_t c) {
    const auto within = [c](char32_t first, char32_t last) { return c >= first && c <= last; };
    const bool takesNone = within(0x300, 0x36F) || within(0x200B, 0x200F) || within(0xFE00, 0xFE0F) ||
                           within(0x20D0, 0x20FF) || within(0x1F3FB, 0x1F3FF) || c == 0x2060 || c == 0xFEFF;
    if (takesNone) return 0;
    const bool takesTwo = within(0x1100, 0x115F) || within(0x2E80, 0x303E) || within(0x3041, 0xA4CF) ||
                          within(0xAC00, 0xD7A3) || within(0xF900, 0xFAFF) || within(0xFE30, 0xFE6F) ||
                          within(0xFF00, 0xFF60) || within(0xFFE0, 0xFFE6) || within(0x1F300, 0x1F64F) ||
                          within(0x1F680, 0x1F6FF) || within(0x1F900, 0x1F9FF) || within(0x20000, 0x3FFFD);
    return takesTwo ? 2 : 1;
}

bool isControl(char32_t c) {
    // Direction overrides could make a line show something else than it holds.
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029 || (c >= 0x202A && c <= 0x202E);
}

}  // namespace

Console::Console(bool allowColors)
    : colors_(allowColors && isatty(STDOUT_FILENO) && !environmentSays("NO_COLOR") && !isDumbTerminal()) {}

std::ostream& Console::out() const {
    return std::cout;
}
std::ostream& Console::err() const {
    return std::cerr;
}

bool Console::isInteractive() const {
    return isatty(STDIN_FILENO) && isatty(STDERR_FILENO);
}

std::optional<int> Console::width() const {
    winsize size{};
    if (!isatty(STDOUT_FILENO) || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return std::nullopt;
    return size.ws_col;
}

std::string Console::styled(std::string_view text, std::string_view code) const {
    if (!colors_) return std::string(text);
    return "\x1b[" + std::string(code) + "m" + std::string(text) + "\x1b[0m";
}

std::string Console::colored(std::string_view text, const platform::Color& color) const {
    const auto part = [](double value) {
        return std::to_string(std::lround(std::clamp(value, 0.0, 1.0) * 255));
    };
    return styled(text, "38;2;" + part(color.red) + ";" + part(color.green) + ";" + part(color.blue));
}

std::optional<std::string> Console::ask(std::string_view question) const {
    err() << question << " " << std::flush;
    std::string answer;
    if (!std::getline(std::cin, answer)) return std::nullopt;
    return platform::trimmed(answer);
}

bool Console::confirm(std::string_view question) const {
    while (true) {
        const auto typed = ask(std::string(question) + " [Y/n]");
        if (!typed) return false;
        const std::string answer = platform::lowercased(*typed);
        if (answer.empty() || answer == "y" || answer == "yes") return true;
        if (answer == "n" || answer == "no") return false;
    }
}

std::optional<std::size_t> Console::askNumber(std::string_view question, std::size_t last) const {
    while (true) {
        const auto typed = ask(std::string(question) + " [1-" + std::to_string(last) + "]");
        if (!typed) return std::nullopt;
        std::size_t number = 0;
        const auto [end, error] = std::from_chars(typed->data(), typed->data() + typed->size(), number);
        const bool isNumber = error == std::errc{} && end == typed->data() + typed->size();
        if (isNumber && number >= 1 && number <= last) return number;
    }
}

void Console::complain(std::string_view text) const {
    err() << "heedbanner: " << text << "\n";
}

std::string onOneLine(std::string_view text) {
    const std::string clean = platform::sanitizedUtf8(text);
    std::string line;
    line.reserve(clean.size());
    for (std::string_view rest = clean; !rest.empty();) {
        const CodePoint point = firstCodePoint(rest);
        if (isControl(point.value)) {
            if (!line.empty() && line.back() != ' ') line += ' ';
        } else {
            line += rest.substr(0, point.bytes);
        }
        rest.remove_prefix(point.bytes);
    }
    return platform::trimmed(line);
}

std::size_t columns(std::string_view text) {
    int count = 0;
    while (!text.empty()) {
        const CodePoint point = firstCodePoint(text);
        count += columnsOf(point.value);
        text.remove_prefix(point.bytes);
    }
    return static_cast<std::size_t>(count);
}

std::string padded(std::string_view text, std::size_t width) {
    std::string result(text);
    const std::size_t taken = columns(text);
    if (taken < width) result.append(width - taken, ' ');
    return result;
}

}  // namespace hbr
