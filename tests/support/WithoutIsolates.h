#pragma once

#include <string>

namespace test {

/// The text without U+2068 and U+2069, which the sentences put around texts of the other direction.
inline std::string withoutIsolates(std::string text) {
    for (const char* mark : {"\u2068", "\u2069"}) {
        for (std::size_t found; (found = text.find(mark)) != std::string::npos;)
            text.erase(found, 3);
    }
    return text;
}

}  // namespace test
