#include "ZoneFile.h"

#include <fstream>
#include <iterator>

namespace platform {
namespace {

constexpr std::size_t headerSize = 44;
constexpr std::uintmax_t largestFile = 1 << 20;

std::int64_t bigEndian(std::string_view bytes, std::size_t at, std::size_t size) {
    // The sign bit of the first byte reaches up to the top.
    auto value = static_cast<std::uint64_t>(static_cast<std::int64_t>(static_cast<signed char>(bytes[at])));
    for (std::size_t i = 1; i < size; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return static_cast<std::int64_t>(value);
}

struct Header {
    char version = 0;
    std::size_t utIndicators = 0;
    std::size_t standardIndicators = 0;
    std::size_t leapSeconds = 0;
    std::size_t times = 0;
    std::size_t types = 0;
    std::size_t nameBytes = 0;

    std::size_t bodySize(std::size_t timeSize) const {
        return times * (timeSize + 1) + types * 6 + nameBytes + leapSeconds * (timeSize + 4) +
               standardIndicators + utIndicators;
    }
};

std::optional<Header> parseHeader(std::string_view bytes) {
    if (bytes.size() < headerSize || bytes.substr(0, 4) != "TZif") return std::nullopt;
    Header header;
    header.version = bytes[4];
    std::size_t at = 20;
    for (std::size_t* count : {&header.utIndicators, &header.standardIndicators, &header.leapSeconds,
                               &header.times, &header.types, &header.nameBytes}) {
        const std::int64_t value = bigEndian(bytes, at, 4);
        if (value < 0 || static_cast<std::uintmax_t>(value) > largestFile) return std::nullopt;
        *count = static_cast<std::size_t>(value);
        at += 4;
    }
    return header;
}

std::optional<ZoneFile> parseBody(std::string_view body, const Header& header, std::size_t timeSize) {
    if (body.size() < header.bodySize(timeSize) || header.types == 0 || header.leapSeconds != 0) {
        return std::nullopt;
    }
    const std::size_t indexes = header.times * timeSize;
    const std::size_t types = indexes + header.times;

    std::vector<int> offsets;
    offsets.reserve(header.types);
    for (std::size_t i = 0; i < header.types; ++i) {
        const std::int64_t offset = bigEndian(body, types + i * 6, 4);
        if (offset < -89999 || offset > 93599) return std::nullopt;
        offsets.push_back(static_cast<int>(offset));
    }

    ZoneFile file;
    file.before = offsets.front();
    file.transitions.reserve(header.times);
    for (std::size_t i = 0; i < header.times; ++i) {
        const std::int64_t at = bigEndian(body, i * timeSize, timeSize);
        const auto type = static_cast<unsigned char>(body[indexes + i]);
        if (type >= offsets.size()) return std::nullopt;
        if (!file.transitions.empty() && at <= file.transitions.back().at) return std::nullopt;
        file.transitions.push_back({at, offsets[type]});
    }
    return file;
}

}  // namespace

std::optional<ZoneFile> ZoneFile::parse(std::string_view bytes) {
    const auto first = parseHeader(bytes);
    if (!first) return std::nullopt;
    bytes.remove_prefix(headerSize);
    if (first->version == '\0') return parseBody(bytes, *first, 4);

    if (bytes.size() < first->bodySize(4)) return std::nullopt;
    bytes.remove_prefix(first->bodySize(4));
    const auto second = parseHeader(bytes);
    if (!second) return std::nullopt;
    bytes.remove_prefix(headerSize);
    auto file = parseBody(bytes, *second, 8);
    if (!file) return std::nullopt;
    bytes.remove_prefix(second->bodySize(8));
    if (bytes.size() < 2 || bytes.front() != '\n') return std::nullopt;
    const auto end = bytes.find('\n', 1);
    if (end == std::string_view::npos) return std::nullopt;
    file->footer = bytes.substr(1, end - 1);
    return file;
}

std::optional<ZoneFile> ZoneFile::read(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
    const auto size = std::filesystem::file_size(path, error);
    if (error || size > largestFile) return std::nullopt;
    std::ifstream stream(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (!stream) return std::nullopt;
    return parse(bytes);
}

}  // namespace platform
