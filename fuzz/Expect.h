#pragma once

#include <cstdio>
#include <cstdlib>

/// A property that holds for every input; the fuzzer keeps the input for which it does not.
inline void expect(bool holds, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", property);
    std::abort();
}
