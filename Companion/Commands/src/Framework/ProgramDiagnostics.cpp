#include "Framework/ProgramDiagnostics.h"

#include <Words/CompanionText.h>
#include <Words/OneLine.h>

#include <iostream>
#include <set>

namespace hbr {

void ProgramDiagnostics::report(platform::Diagnostic diagnostic) {
    if (verbose_) {
        // One write per line, so that lines of several threads do not mix.
        const std::string line = "heedbanner: " + std::string(severityName(diagnostic.severity)) + ": " +
                                 onOneLine(describe(diagnostic)) + "\n";
        std::cerr.write(line.data(), static_cast<std::streamsize>(line.size()));
    }
    collected_.report(std::move(diagnostic));
}

std::string ProgramDiagnostics::summary(const platform::Environment& environment) const {
    if (verbose_) return {};
    std::size_t warnings = 0;
    std::set<std::filesystem::path> files;
    for (const auto& diagnostic : all()) {
        if (diagnostic.severity == platform::Diagnostic::Severity::info) continue;
        ++warnings;
        files.insert(diagnostic.file);
    }
    if (warnings == 0) return {};
    const std::string problemCount = companionCount(environment, "Count.problems", warnings);
    const std::string fileCount = companionCount(environment, "Count.files", files.size());
    return companionText(environment, "Program.problems", {problemCount, fileCount});
}

std::string_view severityName(platform::Diagnostic::Severity severity) {
    switch (severity) {
        case platform::Diagnostic::Severity::info:
            return "note";
        case platform::Diagnostic::Severity::warning:
            return "warning";
        case platform::Diagnostic::Severity::error:
            return "error";
    }
    return "";
}

}  // namespace hbr
