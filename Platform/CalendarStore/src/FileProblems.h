#pragma once

#include <System/Diagnostics.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

/// Reports the problems of one file as diagnostics: the first `limits::problems` one by one, then how many
/// more there are. `file` and `diagnostics` outlive it.
class FileProblems {
  public:
    FileProblems(const std::filesystem::path& file, DiagnosticsSink& diagnostics)
        : file_(file), diagnostics_(diagnostics) {}

    /// Of the problems that follow, counted from 1; 0 for the whole file.
    void setLine(int line) { line_ = line; }
    int line() const { return line_; }
    void report(std::string text, std::string_view field = {});
    /// Once, at the end of the file.
    void reportRest();

  private:
    const std::filesystem::path& file_;
    DiagnosticsSink& diagnostics_;
    int line_ = 0;
    int count_ = 0;
};

/// "200,000 events".
std::string counted(std::size_t number, std::string_view unit);

}  // namespace platform
