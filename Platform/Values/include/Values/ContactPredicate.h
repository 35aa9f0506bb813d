#pragma once

#include <string>

namespace platform {

/// Finds a participant in the contacts: by e-mail address without regard to letter case, else by name.
struct ContactPredicate {
    std::string email;
    std::string name;

    friend bool operator==(const ContactPredicate&, const ContactPredicate&) = default;
};

}  // namespace platform
