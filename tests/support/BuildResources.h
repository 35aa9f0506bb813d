#pragma once

#include <filesystem>

namespace test {

/// The resource folder of this build, as the programs find theirs.
std::filesystem::path buildResources();
/// Approved pictures, in the source tree.
std::filesystem::path testPictures();

}  // namespace test
