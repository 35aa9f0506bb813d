#pragma once

#include <cstddef>

namespace platform::limits {

// What is read of one calendar file, far above what real files hold: without these bounds a few megabytes
// could cost minutes and gigabytes. docs/security.md lists them.

/// Events and tasks of one file; with more of them none is used.
constexpr std::size_t items = 200'000;
/// Kept lines of one item, and their bytes.
constexpr std::size_t lines = 20'000;
constexpr std::size_t textBytes = std::size_t{4} << 20;
/// Of one item: RDATE and EXDATE together.
constexpr std::size_t dates = 20'000;
/// Of one item: RRULE and EXRULE together.
constexpr std::size_t rules = 50;
/// BYYEARDAY with every day of the year takes 1,800.
constexpr std::size_t ruleBytes = 4096;
/// Rules of all zone definitions of a file.
constexpr std::size_t zoneRules = 5000;
constexpr std::size_t zoneNameBytes = 255;
/// Longer parameter lists are reduced to the parameters that a record is made of, each up to this length.
constexpr std::size_t parameterBytes = 1024;

/// Reported of one file by one reader; the rest is only counted or mentioned.
constexpr int problems = 100;

}  // namespace platform::limits
