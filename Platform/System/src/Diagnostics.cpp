#include <System/Diagnostics.h>

namespace platform {

std::string describe(const Diagnostic& diagnostic) {
    std::string text;
    if (!diagnostic.file.empty()) {
        text = diagnostic.file.string();
        if (diagnostic.line) text += ':' + std::to_string(*diagnostic.line);
        text += ": ";
    } else if (diagnostic.line) {
        text = "line " + std::to_string(*diagnostic.line) + ": ";
    }
    if (!diagnostic.field.empty()) text += diagnostic.field + ": ";
    return text + diagnostic.text;
}

void CollectedDiagnostics::report(Diagnostic diagnostic) {
    std::string identity = std::to_string(static_cast<int>(diagnostic.severity)) + describe(diagnostic);
    std::lock_guard lock(mutex_);
    if (seen_.insert(std::move(identity)).second) diagnostics_.push_back(std::move(diagnostic));
}

std::vector<Diagnostic> CollectedDiagnostics::all() const {
    std::lock_guard lock(mutex_);
    return diagnostics_;
}

}  // namespace platform
