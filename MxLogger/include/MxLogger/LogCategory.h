#pragma once

#include <string>

namespace hbr {

/// What a log line is about.
struct LogCategory {
    std::string name;

    /// Calendar store and event manager.
    static const LogCategory eventKit;
    /// Contacts store.
    static const LogCategory contacts;
    /// Conference services and the link parser.
    static const LogCategory conferenceLinks;

    friend bool operator==(const LogCategory&, const LogCategory&) = default;
};

inline const LogCategory LogCategory::eventKit{"EventKit"};
inline const LogCategory LogCategory::contacts{"Contacts"};
inline const LogCategory LogCategory::conferenceLinks{"ConferenceLinks"};

}  // namespace hbr
