#include <DesktopHost/Program.h>

#include "HostCommandLine.h"
#include "PlacementCommands.h"
#include "RunningHost.h"
#include "WidgetCatalogue.h"

#include <HbrCore/DeepLinks/DesktopApplication.h>
#include <MxLogger/MxLogger.h>
#include <System/DeferredWrites.h>
#include <System/FileLock.h>
#include <System/MainQueue.h>
#include <Workspace/SessionApplication.h>
#include <Workspace/SessionApplicationClient.h>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iostream>
#include <mutex>
#include <optional>

namespace hbr {

namespace {

using platform::SessionApplication;
using platform::SessionApplicationClient;
using Task = HostRequest::Task;

using desktopApplication::identifier;
namespace action = desktopApplication::action;
/// How long the running program may take to end, in seconds.
constexpr double quitPatience = 10;

/// Writes what there is to say on standard error as it comes, each once.
class SpokenDiagnostics final : public platform::DiagnosticsSink {
  public:
    explicit SpokenDiagnostics(bool isVerbose) : isVerbose_(isVerbose) {}

    void report(platform::Diagnostic diagnostic) override {
        if (diagnostic.severity == platform::Diagnostic::Severity::info && !isVerbose_) return;
        const std::lock_guard lock(mutex_);
        const std::size_t before = said_.all().size();
        const std::string line = describe(diagnostic);
        said_.report(std::move(diagnostic));
        if (said_.all().size() != before) std::cerr << "heedbanner-desktop: " << line << std::endl;
    }

  private:
    const bool isVerbose_;
    std::mutex mutex_;
    platform::CollectedDiagnostics said_;
};

void startLogging(const HostRequest& request) {
    if (request.log.empty()) return;
    int output = STDERR_FILENO;
    if (request.log != "-") {
        output = open(request.log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        if (output < 0) throw HostFailure(ExitStatus::failed, request.log + ": " + std::strerror(errno));
    }
    MxLogger::setOutput(output);
    if (request.isVerbose) MxLogger::setMinimumLevel(MxLogger::Level::debug);
    MxLogger::start(true);
}

void require(const std::optional<std::string>& failure) {
    if (failure) throw HostFailure(ExitStatus::failed, *failure);
}

/// Hands the request to the program that runs already.
void handOver(const HostRequest& request, const SessionApplicationClient& running) {
    switch (request.task) {
        case Task::gallery:
            return require(running.activateAction(action::gallery));
        case Task::focus:
            return require(running.activateAction(action::focus, {request.focused}));
        case Task::quit:
            require(running.activateAction(action::quit));
            if (!running.waitUntilGone(quitPatience))
                throw HostFailure(ExitStatus::failed, "the running heedbanner-desktop does not end");
            return;
        default:
            return require(running.activate());
    }
}

/// Its destructor waits until everything is written.
struct LastWrites {
    LastWrites() = default;
    LastWrites(const LastWrites&) = delete;
    LastWrites& operator=(const LastWrites&) = delete;
    ~LastWrites() { platform::DeferredWrites::finish(); }
};

void runHost(const HostRequest& request, RunningHost::World world) {
    std::optional<RunningHost> host(std::move(world));
    auto claimed = SessionApplication::claim(
        {.identifier = identifier,
         .actions = {{action::open, 1, [&](const auto& given) { host->openUrl(given[0]); }},
                     {action::snooze, 2, [&](const auto& given) { host->snooze(given[0], given[1]); }},
                     {action::reload, 0, [&](const auto&) { host->reload(); }},
                     {action::focus, 1, [&](const auto& given) { host->focus(given[0]); }},
                     {action::gallery, 0, [&](const auto&) { host->showGallery(); }},
                     {action::quit, 0, [&](const auto&) { host->quit(); }}},
         .activate = [&] { host->activate(); },
         .open =
             [&](const std::vector<platform::Url>& urls) {
                 for (const platform::Url& url : urls)
                     host->openUrl(url.absoluteString());
             },
         .useActivationToken = [&](const std::string& token) { host->useActivationToken(token); }});
    // Destroyed before the name on the bus is released: whoever waits for that finds everything stored.
    const LastWrites lastWrites;
    if (claimed.claim == SessionApplication::Claim::taken)
        return handOver(request, SessionApplicationClient(identifier));
    if (claimed.claim == SessionApplication::Claim::noBus) {
        std::cerr << "heedbanner-desktop: there is no session bus: notifications are not shown, and a "
                     "second start will not find this one\n";
    }
    host->start(request);
    platform::MainQueue::shared().runUntil([&] { return host->hasEnded(); });
    // Nothing is left on the screen while the last changes are written.
    host.reset();
}

void run(const HostRequest& request, const platform::EnvironmentRef& environment, char** argv) {
    startLogging(request);
    const HeedbannerWidgetBundle bundle(environment,
                                        []() -> CoreServices& { return CoreServices::shared(); });
    const WidgetCatalogue catalogue(bundle);
    const PlacementsFile placements(environment);
    const SessionApplicationClient running(identifier);

    if (request.task == Task::list) return listWidgets(placements, request.wantsJson, std::cout);
    if (request.task == Task::add) return addWidget(placements, catalogue, request);
    if (request.task == Task::remove) return removeWidgets(placements, request.removed);
    if (!request.focused.empty() && !catalogue.find(request.focused)) catalogue.choice(request.focused);

    std::vector<WidgetCatalogue::Choice> wanted;
    for (const std::string& text : request.widgets)
        wanted.push_back(catalogue.choice(text));

    if (running.isRunning()) {
        placeMissing(placements, wanted);
        return handOver(request, running);
    }
    if (request.task == Task::quit || request.task == Task::focus)
        throw HostFailure(ExitStatus::nothingThere, "no heedbanner-desktop is running");
    CoreServices::configureShared({.isLongLived = true});
    CoreServices& core = CoreServices::shared();
    // From here on the main thread draws; it must not wait while another program writes.
    platform::DeferredWrites::setOn(true);
    platform::FileLock::setPatience({.seconds = 0});
    placeMissing(placements, wanted);
    runHost(request, {.environment = environment,
                      .core = core,
                      .bundle = bundle,
                      .catalogue = catalogue,
                      .placements = placements,
                      .argv = argv});
}

ExitStatus finishOutput(ExitStatus status) {
    std::cout.flush();
    if (std::cout) return status;
    std::cerr << "heedbanner-desktop: standard output could not be written\n";
    return ExitStatus::failed;
}

}  // namespace

int runDesktopProgram(int argc, char** argv, std::string_view version) {
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const HostCommandLine line = readHostCommandLine(arguments, version);
    if (!line.request) {
        if (line.status != ExitStatus::done) {
            std::cerr << "heedbanner-desktop: " << line.text << '\n';
        } else {
            std::cout << line.text;
        }
        return static_cast<int>(finishOutput(line.status));
    }
    auto environment = std::make_shared<platform::Environment>(
        *platform::Environment::fromProcess("heedbanner", platform::programPath(argc > 0 ? argv[0] : ""), {},
                                            std::make_shared<SpokenDiagnostics>(line.request->isVerbose)));
    environment->programName = "heedbanner-desktop";
    platform::Environment::setCurrent(environment);
    ExitStatus status = ExitStatus::done;
    try {
        run(*line.request, environment, argv);
    } catch (const HostFailure& failure) {
        std::cerr << "heedbanner-desktop: " << failure.what() << '\n';
        status = failure.status;
    } catch (const std::exception& problem) {
        std::cerr << "heedbanner-desktop: " << problem.what() << '\n';
        status = ExitStatus::failed;
    }
    return static_cast<int>(finishOutput(status));
}

}  // namespace hbr
