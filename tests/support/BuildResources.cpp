#include "BuildResources.h"

namespace test {

std::filesystem::path buildResources() {
    return HEEDBANNER_BUILD_RESOURCES;
}

}  // namespace test
