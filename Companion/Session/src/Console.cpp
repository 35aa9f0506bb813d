#include <Session/Console.h>

#include <TimeAndText/Text.h>
#include <Words/OneLine.h>

#include <sys/ioctl.h>
#include <unistd.h>
#include <algorithm>
#include <array>
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

bool terminalIs(std::string_view name) {
    const char* term = std::getenv("TERM");
    return term && std::string_view(term) == name;
}

bool hasTrueColor() {
    const char* depth = std::getenv("COLORTERM");
    return depth && (std::string_view(depth) == "truecolor" || std::string_view(depth) == "24bit");
}

long byteOf(double part) {
    return std::lround(std::clamp(part, 0.0, 1.0) * 255);
}

/// The nearest of a terminal's 256 colours: a cube of 6 × 6 × 6 behind the first 16, then 24 greys.
long nearestOf256(const platform::Color& color) {
    constexpr std::array<long, 6> levels = {0, 95, 135, 175, 215, 255};
    const std::array<long, 3> parts = {byteOf(color.red), byteOf(color.green), byteOf(color.blue)};
    long index = 16;
    long cubeError = 0;
    for (const long part : parts) {
        const auto nearest =
            std::ranges::min_element(levels, {}, [&](long level) { return std::abs(level - part); });
        index = (index - 16) * 6 + (nearest - levels.begin()) + 16;
        cubeError += (*nearest - part) * (*nearest - part);
    }
    const long average = (parts[0] + parts[1] + parts[2]) / 3;
    const long grey = std::clamp((average - 3) / 10, 0L, 23L);
    long greyError = 0;
    for (const long part : parts)
        greyError += (8 + 10 * grey - part) * (8 + 10 * grey - part);
    return greyError < cubeError ? 232 + grey : index;
}

}  // namespace

Console::Console(bool allowColors)
    : colors_(allowColors && isatty(STDOUT_FILENO) && !environmentSays("NO_COLOR") && !terminalIs("dumb")),
      trueColors_(hasTrueColor()),
      // The Linux console would print the addresses.
      links_(colors_ && !terminalIs("linux")) {}

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
    if (!trueColors_) return styled(text, "38;5;" + std::to_string(nearestOf256(color)));
    const auto part = [](double value) { return std::to_string(byteOf(value)); };
    return styled(text, "38;2;" + part(color.red) + ";" + part(color.green) + ";" + part(color.blue));
}

std::string Console::linked(std::string_view text, std::string_view url) const {
    if (!links_) return std::string(text);
    return "\x1b]8;;" + onOneLine(url) + "\x1b\\" + std::string(text) + "\x1b]8;;\x1b\\";
}

std::optional<std::string> Console::ask(std::string_view question) const {
    err() << question << " " << std::flush;
    std::string answer;
    if (!std::getline(std::cin, answer)) return std::nullopt;
    return platform::trimmed(answer);
}

std::optional<std::size_t> Console::askNumber(std::string_view question, std::size_t last) const {
    while (true) {
        const auto typed = ask(question);
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

}  // namespace hbr
