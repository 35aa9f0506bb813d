#include "BuildResources.h"

namespace test {

std::filesystem::path buildResources() {
    return HEEDBANNER_BUILD_RESOURCES;
}

std::filesystem::path testPictures() {
    return HEEDBANNER_TEST_PICTURES;
}

}  // namespace test
