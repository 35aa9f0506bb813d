#pragma once

#include <HbrUtils/Formatters.h>

#include <string>

#include "support/TestEnvironment.h"

namespace hbr::test {

/// A world whose texts come from the built string bundle, current for as long as the process runs.
class TextEnvironment : public ::test::TestEnvironment {
  public:
    explicit TextEnvironment(const char* now, const char* locale = "en_US")
        : TestEnvironment(now, "Europe/Berlin", locale), formatters((useResources(), ref())) {
        platform::Environment::setCurrent(ref());
    }

    const Formatters formatters;

  private:
    void useResources() { change().resourceDirectories = {::test::buildResources()}; }
};

/// Narrow no-break spaces shown as "_".
inline std::string shown(std::string text) {
    for (std::size_t found; (found = text.find("\u202F")) != std::string::npos;)
        text.replace(found, 3, "_");
    return text;
}

}  // namespace hbr::test
