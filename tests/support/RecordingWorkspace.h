#pragma once

#include <Workspace/Workspace.h>

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// Records what is opened; the programs that are there are those that the test names.
class RecordingWorkspace final : public platform::Workspace {
  public:
    std::optional<std::string> open(const platform::Url& url) override {
        if (broken.contains(url.scheme().value_or(""))) return "broken";
        opened.push_back(url.absoluteString());
        return std::nullopt;
    }
    std::optional<std::string> programForScheme(std::string_view scheme) const override {
        return schemes.contains(scheme) ? std::optional<std::string>("Program") : std::nullopt;
    }
    std::optional<std::string> programForContentType(std::string_view type) const override {
        return hasCalendar && type == "text/calendar" ? std::optional<std::string>("Planner") : std::nullopt;
    }
    std::optional<std::string> startProgramForContentType(std::string_view type) override {
        opened.push_back("program for " + std::string(type));
        return std::nullopt;
    }

    std::set<std::string, std::less<>> schemes = {"https"};
    std::set<std::string, std::less<>> broken;
    bool hasCalendar = false;
    std::vector<std::string> opened;
};

}  // namespace test
