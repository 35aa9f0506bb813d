#include "ProcessTimeZone.h"

namespace platform {
namespace fs = std::filesystem;
namespace {

/// The name of a zone file below some "zoneinfo" folder, else "".
std::string zoneName(const fs::path& file) {
    constexpr std::string_view folder = "/zoneinfo/";
    std::string text = file.lexically_normal().string();
    auto place = text.rfind(folder);
    if (place == std::string::npos) return {};
    std::string name = text.substr(place + folder.size());
    if (name.starts_with("posix/")) name.erase(0, 6);
    return name;
}

std::optional<TimeZone> zoneAt(const fs::path& file, const fs::path& zoneInfo) {
    if (std::string name = zoneName(file); !name.empty()) {
        if (auto zone = TimeZone::named(name, zoneInfo)) return zone;
    }
    std::error_code error;
    fs::path target = fs::canonical(file, error);
    if (error) return std::nullopt;
    if (std::string name = zoneName(target); !name.empty()) {
        if (auto zone = TimeZone::named(name, zoneInfo)) return zone;
    }
    return TimeZone::named(target.filename().string(), target.parent_path());
}

}  // namespace

TimeZone processTimeZone(const std::optional<std::string>& tz, const fs::path& zoneInfo,
                         const fs::path& localtime, DiagnosticsSink& diagnostics) {
    if (tz) {
        std::string name = tz->starts_with(':') ? tz->substr(1) : *tz;
        if (name.empty() || name == "UTC") return TimeZone::utc();
        auto zone = name.front() == '/' ? zoneAt(name, zoneInfo) : TimeZone::named(name, zoneInfo);
        if (!zone) zone = TimeZone::fromPosixRule(name);
        if (zone) return *zone;
        diagnostics.report({Diagnostic::Severity::warning,
                            {},
                            {},
                            "TZ",
                            "there is no time zone \"" + name + "\"; the system's own is used"});
    }
    if (auto zone = zoneAt(localtime, zoneInfo)) return *zone;
    diagnostics.report({Diagnostic::Severity::warning,
                        localtime,
                        {},
                        "",
                        "the time zone cannot be read; times are shown in UTC"});
    return TimeZone::utc();
}

}  // namespace platform
