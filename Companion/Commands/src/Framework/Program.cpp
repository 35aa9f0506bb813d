#include <Commands/Program.h>

#include "Framework/CommandLine.h"
#include "Framework/Completion.h"
#include "Framework/ProgramDiagnostics.h"

#include <MxLogger/MxLogger.h>
#include <Session/CommandContext.h>
#include <Session/Console.h>
#include <System/FileLock.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>

#include <fcntl.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <iostream>

namespace hbr {

namespace {

/// The log is on only for this run, with --log.
void startLogging(const GeneralOptions& options) {
    if (options.log.empty()) return;
    int output = STDERR_FILENO;
    if (options.log != "-") {
        output = open(options.log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        if (output < 0) throw CommandFailure(ExitCode::failed, options.log + ": " + std::strerror(errno));
    }
    MxLogger::setOutput(output);
    if (options.verbose) MxLogger::setMinimumLevel(MxLogger::Level::debug);
    MxLogger::start(true);
}

ExitCode run(Command& command, CommandContext& context, const ProgramDiagnostics& diagnostics) {
    ExitCode code = ExitCode::failed;
    try {
        startLogging(context.options());
        code = command.run(context);
    } catch (const CommandFailure& failure) {
        context.console().complain(failure.what());
        code = failure.code;
    } catch (const std::exception& error) {
        context.console().complain(error.what());
    }
    const bool reportsItself = command.name() == "doctor" || command.isLongLived();
    std::vector<std::string> remarks = context.remarks();
    if (!reportsItself) remarks.push_back(diagnostics.summary(*context.environment()));
    std::string line;
    for (const std::string& remark : remarks)
        line += (line.empty() || remark.empty() ? "" : "; ") + remark;
    if (!line.empty()) context.console().complain(line);
    return code;
}

std::shared_ptr<platform::Environment> processEnvironment(
    const char* program, std::shared_ptr<platform::DiagnosticsSink> diagnostics) {
    auto environment = std::make_shared<platform::Environment>(*platform::Environment::fromProcess(
        "heedbanner", platform::programPath(program), {}, std::move(diagnostics)));
    environment->programName = "heedbanner";
    return environment;
}

/// A full disk is a failure. (When the reader has gone away, the signal ends the process quietly.)
int finishOutput(ExitCode code, const char* program) {
    std::cout.flush();
    if (std::cout) return static_cast<int>(code);
    const auto environment = processEnvironment(program, {});
    std::cerr << "heedbanner: " << companionText(*environment, "Program.outputNotWritten") << "\n";
    return static_cast<int>(ExitCode::failed);
}

}  // namespace

int runCompanion(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    std::signal(SIGPIPE, SIG_DFL);
    const auto commands = allCommands();
    const char* const program = argc > 0 ? argv[0] : "";
    if (argc > 2 && std::strcmp(argv[1], "--complete") == 0) {
        // Called by the shells' completion with the words up to the one that is being typed.
        return finishOutput(printCompletions({argv + 2, argv + argc}, commands, argv[0]), program);
    }
    const CommandLine line = readCommandLine(argc, argv, commands);
    if (!line.command) return finishOutput(line.exitCode, program);

    const auto diagnostics = std::make_shared<ProgramDiagnostics>(line.general.verbose);
    const auto environment = processEnvironment(program, diagnostics);
    if (line.general.now) environment->clock = [now = *line.general.now] { return now; };
    platform::Environment::setCurrent(environment);
    platform::FileLock::setPatience({.onLongWait = [environment](const std::filesystem::path& file) {
        std::cerr << "heedbanner: "
                  << companionText(*environment, "Program.waiting", {onOneLine(file.native())}) << "\n"
                  << std::flush;
    }});

    CommandContext context(
        environment, Console(!line.general.noColor), line.general,
        {.isLongLived = line.command->isLongLived(), .asksForAccess = line.command->asksForAccess()});
    return finishOutput(run(*line.command, context, *diagnostics), program);
}

}  // namespace hbr
