#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

enum class HostJudgement {
    noHost,
    /// A host only when a path follows: otherwise a file name, an abbreviation or a time of day.
    hostWithPath,
    host
};

/// The part of a word that may be a host without a scheme: without emphasis and punctuation around it; empty
/// when no part may. A view into `word`.
std::string_view bareHostIn(std::string_view word);
/// Whether a text without a scheme ("example.com") names a host.
HostJudgement judgeHostWithoutScheme(std::string_view host);
bool isMailHost(std::string_view host);

}  // namespace platform
