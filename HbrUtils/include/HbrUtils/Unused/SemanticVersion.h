#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace hbr {

struct SemanticVersion {
    std::int64_t major = 0;
    std::int64_t minor = 0;
    std::int64_t patch = 0;

    /// One to three whole numbers between dots; empty pieces are skipped, missing ones are 0.
    static std::optional<SemanticVersion> parse(std::string_view text);

    bool isEqual(const SemanticVersion& other) const { return *this == other; }
    bool isNewerThan(const SemanticVersion& other) const;
    /// The patch number is ignored.
    bool isNewerMajorOrMinorThan(const SemanticVersion& other) const;

    friend bool operator==(const SemanticVersion&, const SemanticVersion&) = default;
};

}  // namespace hbr
