#pragma once

#include <TimeAndText/Date.h>

#include <optional>
#include <string>

namespace hbr {

/// Options of every command.
struct GeneralOptions {
    bool verbose = false;
    bool noColor = false;
    bool assumeYes = false;
    bool noInput = false;
    /// Freezes the clock for the whole command.
    std::optional<platform::Date> now;
    /// A file, or "-" for standard error; empty: no log.
    std::string log;
};

}  // namespace hbr
