#pragma once

#include <HbrUtils/Formatters.h>

#include <string>

#include <support/TestEnvironment.h>

namespace test {

/// A world whose texts come from the built string bundle, current for as long as the process runs.
class TextEnvironment : public TestEnvironment {
  public:
    explicit TextEnvironment(const char* now, const char* locale = "en_US")
        : TestEnvironment(now, "Europe/Berlin", locale), formatters((useResources(), ref())) {
        platform::Environment::setCurrent(ref());
    }

    const hbr::Formatters formatters;

  private:
    void useResources() { change().resourceDirectories = {buildResources()}; }
};

/// Narrow no-break spaces shown as "_".
inline std::string shown(std::string text) {
    for (std::size_t found; (found = text.find("\u202F")) != std::string::npos;)
        text.replace(found, 3, "_");
    return text;
}

}  // namespace test
