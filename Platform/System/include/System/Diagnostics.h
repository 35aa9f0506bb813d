#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace platform {

/// What the lower layer has to say about outside data: which file, where in it, what and why.
struct Diagnostic {
    enum class Severity { info, warning, error };

    Severity severity = Severity::warning;
    std::filesystem::path file = {};
    std::optional<int> line = {};
    /// The setting, property or item meant; may be empty.
    std::string field = {};
    std::string text = {};

    friend bool operator==(const Diagnostic&, const Diagnostic&) = default;
};

/// "FILE:LINE: FIELD: TEXT" with the parts that are there.
std::string describe(const Diagnostic& diagnostic);

/// Receives diagnostics from any thread.
class DiagnosticsSink {
  public:
    virtual ~DiagnosticsSink() = default;
    virtual void report(Diagnostic diagnostic) = 0;
};

/// Keeps every diagnostic once, in the order of the first report.
class CollectedDiagnostics final : public DiagnosticsSink {
  public:
    void report(Diagnostic diagnostic) override;
    std::vector<Diagnostic> all() const;

  private:
    mutable std::mutex mutex_;
    std::vector<Diagnostic> diagnostics_;
    std::unordered_set<std::string> seen_;
};

}  // namespace platform
