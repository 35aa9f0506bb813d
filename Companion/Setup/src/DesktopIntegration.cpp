#include <Setup/DesktopIntegration.h>

#include <Setup/DesktopProgram.h>
#include <System/Files.h>
#include <Words/CompanionText.h>
#include <Workspace/SessionApplicationClient.h>

#include <array>
#include <filesystem>
#include <string>

namespace hbr {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view placeholder = "@HEEDBANNER_DESKTOP@";
/// Distinguishes our files from files that somebody else wrote.
constexpr std::string_view mark = "# Written by heedbanner setup\n";

struct IntegrationFile {
    const char* resource;
    fs::path target;
};

std::array<IntegrationFile, 2> integrationFiles(const platform::Environment& environment) {
    // The product's folders are inside the user's.
    const fs::path config = environment.configDirectory.parent_path();
    const fs::path data = environment.dataDirectory.parent_path();
    return {{{"integration/com.quietlark.heedbanner.autostart.in",
              config / "autostart/com.quietlark.heedbanner.desktop"},
             {"integration/com.quietlark.heedbanner.service.in",
              data / "dbus-1/services/com.quietlark.heedbanner.service"}}};
}

std::string templateText(const platform::Environment& environment, const char* resource) {
    std::error_code error;
    for (const fs::path& folder : environment.resourceDirectories) {
        if (auto text = platform::readRegularFile(folder / resource, error)) return *text;
    }
    throw CommandFailure(ExitCode::failed,
                         companionText(environment, "Setup.notInstalled", {std::string(resource)}));
}

std::optional<std::string> contentOf(const fs::path& file) {
    std::error_code error;
    return platform::readRegularFile(file, error);
}

[[noreturn]] void fail(const platform::Environment& environment, const fs::path& file,
                       const std::error_code& error) {
    throw CommandFailure(ExitCode::failed,
                         companionText(environment, "Setup.notWritten", {file.string(), error.message()}));
}

}  // namespace

void installDesktopIntegration(CommandContext& context, bool isDryRun) {
    const platform::Environment& environment = *context.environment();
    const auto program = desktopProgram();
    if (!program) {
        throw CommandFailure(ExitCode::nothingThere, companionText(environment, "Setup.desktopMissing"));
    }
    for (const IntegrationFile& file : integrationFiles(environment)) {
        const auto existing = contentOf(file.target);
        if (existing && !existing->starts_with(mark)) {
            context.console().complain(companionText(environment, "Setup.stays", {file.target.string()}));
            continue;
        }
        std::string text = templateText(environment, file.resource);
        text.replace(text.find(placeholder), placeholder.size(), program->string());
        if (!isDryRun) {
            std::error_code error;
            const bool isWritten =
                platform::createDirectories(file.target.parent_path(), 0700, error) &&
                platform::writeFileAtomically(file.target, std::string(mark) + text, 0600, error);
            if (!isWritten) fail(environment, file.target, error);
        }
        context.console().out() << file.target.string() << ": "
                                << companionText(environment,
                                                 isDryRun ? "Setup.wouldBeWritten" : "Setup.written")
                                << "\n";
    }
    if (!isDryRun) platform::SessionApplicationClient::rereadPrograms();
}

bool removeDesktopIntegration(CommandContext& context, bool isDryRun) {
    bool wasThere = false;
    for (const IntegrationFile& file : integrationFiles(*context.environment())) {
        const auto existing = contentOf(file.target);
        if (!existing || !existing->starts_with(mark)) continue;
        wasThere = true;
        std::error_code error;
        if (!isDryRun && !fs::remove(file.target, error)) fail(*context.environment(), file.target, error);
        context.console().out() << file.target.string() << ": "
                                << companionText(*context.environment(),
                                                 isDryRun ? "Setup.wouldBeRemoved" : "Setup.removed")
                                << "\n";
    }
    if (wasThere && !isDryRun) platform::SessionApplicationClient::rereadPrograms();
    return wasThere;
}

}  // namespace hbr
