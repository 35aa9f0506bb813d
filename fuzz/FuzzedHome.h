#pragma once

#include <System/Diagnostics.h>
#include <System/Environment.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

/// A data folder of its own, gone with the process.
class FuzzedHome {
  public:
    FuzzedHome() {
        std::string name = (std::filesystem::temp_directory_path() / "heedbanner-fuzz-XXXXXX").string();
        if (!mkdtemp(name.data())) std::abort();
        folder_ = name;
        auto world = std::make_shared<platform::Environment>();
        world->programName = "fuzz";
        world->dataDirectory = folder_;
        world->resourceDirectories = {HEEDBANNER_RESOURCES};
        environment_ = std::move(world);
    }
    ~FuzzedHome() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    FuzzedHome(const FuzzedHome&) = delete;
    FuzzedHome& operator=(const FuzzedHome&) = delete;

    void write(const char* name, std::string_view content) const {
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }
    const platform::EnvironmentRef& environment() const { return environment_; }

  private:
    std::filesystem::path folder_;
    platform::EnvironmentRef environment_;
};
