#include <HeedbannerWidgetExtension/WidgetProgram.h>

#include <HeedbannerWidgetExtension/HeedbannerWidgetBundle.h>
#include <System/Environment.h>
#include <WidgetHost/WidgetCommandLine.h>

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace hbr {

namespace {

std::unique_ptr<platform::WidgetBundle> makeBundle(platform::EnvironmentRef environment,
                                                   bool isDemonstration) {
    platform::Environment::setCurrent(environment);
    if (isDemonstration) return HeedbannerWidgetBundle::demonstration(environment);
    return std::make_unique<HeedbannerWidgetBundle>(environment,
                                                    []() -> CoreServices& { return CoreServices::shared(); });
}

}  // namespace

int runWidgetProgram(int argc, const char* const* argv, std::string_view version) {
    platform::WidgetCommandLine::Program program{
        .name = "heedbanner-widgets",
        .summary = "Answers for the Heedbanner widgets: what each of them shows, and when.",
        .version = std::string(version),
        .examples = {{"heedbanner-widgets timeline upcoming --json", "the entries of a widget from now on"},
                     {"heedbanner-widgets render countdown -o next.png", "a picture of what is shown now"},
                     {"heedbanner-widgets render upcoming --family large --demo -o demo.svg",
                      "the same with demonstration events"}},
        .makeBundle = makeBundle};
    const auto environment =
        platform::Environment::fromProcess("heedbanner", platform::programPath(argc > 0 ? argv[0] : ""));
    platform::WidgetCommandLine commandLine(std::move(program), environment, std::cout, std::cerr);
    return commandLine.run(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
}

}  // namespace hbr
