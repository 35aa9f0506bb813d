#pragma once

#include <System/Diagnostics.h>
#include <System/Environment.h>

#include <vector>

namespace hbr {

/// Collects the diagnostics of the lower layers; with `verbose` each is also written to standard error at
/// once.
class ProgramDiagnostics final : public platform::DiagnosticsSink {
  public:
    explicit ProgramDiagnostics(bool verbose) : verbose_(verbose) {}

    void report(platform::Diagnostic diagnostic) override;
    /// Each once, in the order of the first report.
    std::vector<platform::Diagnostic> all() const { return collected_.all(); }
    /// One line that counts the warnings and points to `doctor`; empty when there are none or when they were
    /// already written.
    std::string summary(const platform::Environment& environment) const;

  private:
    bool verbose_;
    platform::CollectedDiagnostics collected_;
};

/// "note", "warning", "error": for the log and JSON.
std::string_view severityName(platform::Diagnostic::Severity severity);

}  // namespace hbr
