#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

enum class HostJudgement {
    noHost,
    /// A host only when a path follows: else a file name, an abbreviation, a time of day.
    hostWithPath,
    host
};

/// Whether a text that stands without a scheme ("example.com") names a host.
HostJudgement judgeHostWithoutScheme(std::string_view host);
bool isMailHost(std::string_view host);

}  // namespace platform
