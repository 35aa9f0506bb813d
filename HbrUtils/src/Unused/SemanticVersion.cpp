#include <HbrUtils/Unused/SemanticVersion.h>

#include <TimeAndText/Text.h>

#include <array>
#include <charconv>
#include <string>
#include <tuple>

namespace hbr {

namespace {

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    std::int64_t number = 0;
    const auto* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    return parsed.ec == std::errc{} && parsed.ptr == end ? std::optional(number) : std::nullopt;
}

}  // namespace

std::optional<SemanticVersion> SemanticVersion::parse(std::string_view text) {
    const auto pieces = platform::split(text, ".", false);
    std::array<std::int64_t, 3> numbers{};
    if (pieces.empty() || pieces.size() > numbers.size()) return std::nullopt;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const auto number = wholeNumber(pieces[i]);
        if (!number) return std::nullopt;
        numbers[i] = *number;
    }
    return SemanticVersion{numbers[0], numbers[1], numbers[2]};
}

bool SemanticVersion::isNewerThan(const SemanticVersion& other) const {
    return std::tie(major, minor, patch) > std::tie(other.major, other.minor, other.patch);
}

bool SemanticVersion::isNewerMajorOrMinorThan(const SemanticVersion& other) const {
    return std::tie(major, minor) > std::tie(other.major, other.minor);
}

}  // namespace hbr
