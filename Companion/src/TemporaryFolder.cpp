#include "TemporaryFolder.h"

#include <Companion/ExitCode.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace hbr {

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    auto parent = std::filesystem::temp_directory_path(error);
    if (error) parent = "/tmp";
    std::string name = (parent / "heedbanner-XXXXXX").string();
    if (!mkdtemp(name.data())) throw CommandFailure(ExitCode::failed, name + ": " + std::strerror(errno));
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace hbr
