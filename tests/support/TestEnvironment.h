#pragma once

#include <System/Environment.h>
#include <support/BuildResources.h>
#include <support/TemporaryDirectory.h>

#include <atomic>
#include <memory>
#include <string>
#include <string_view>

namespace test {

/// The moment written as RFC 3339; throws for a slip in the test.
inline platform::Date at(std::string_view rfc3339) {
    return platform::parseRfc3339(rfc3339).value();
}

/// A line each.
inline std::string reports(const platform::CollectedDiagnostics& diagnostics) {
    std::string text;
    for (const platform::Diagnostic& one : diagnostics.all())
        text += platform::describe(one) + "\n";
    return text;
}

/// A world of its own: temporary folders, a clock that stops until it is set, a fixed zone and locale.
class TestEnvironment {
  public:
    explicit TestEnvironment(std::string_view now = "2026-03-04T09:00:00Z",
                             std::string_view zone = "Europe/Berlin", std::string locale = "en_US")
        : now_(std::make_shared<std::atomic<double>>(at(now).timeIntervalSinceReferenceDate())) {
        environment_ = std::make_shared<platform::Environment>();
        environment_->programName = "test";
        environment_->clock = [moment = now_] { return platform::Date(moment->load()); };
        environment_->calendar = platform::Calendar(platform::TimeZone::named(zone).value());
        environment_->locale.languages = {locale.substr(0, locale.find('_'))};
        environment_->locale.identifier = std::move(locale);
        environment_->homeDirectory = home.path();
        environment_->configDirectory = home / "config/heedbanner";
        environment_->dataDirectory = home / "data/heedbanner";
        environment_->cacheDirectory = home / "cache/heedbanner";
        environment_->resourceDirectories = {buildResources()};
        diagnostics = std::make_shared<platform::CollectedDiagnostics>();
        environment_->diagnostics = diagnostics;
    }

    void setNow(std::string_view now) { setNow(at(now)); }
    void setNow(platform::Date now) { now_->store(now.timeIntervalSinceReferenceDate()); }
    void advance(double seconds) { now_->store(now_->load() + seconds); }
    /// To change further fields before the environment is handed out.
    platform::Environment& change() {
        environment_->derived.clear();
        return *environment_;
    }
    platform::EnvironmentRef ref() const { return environment_; }
    operator platform::EnvironmentRef() const { return environment_; }
    /// Everything reported so far, a line each.
    std::string reports() const { return test::reports(*diagnostics); }
    const platform::Environment* operator->() const { return environment_.get(); }

    TemporaryDirectory home;
    std::shared_ptr<platform::CollectedDiagnostics> diagnostics;

  private:
    std::shared_ptr<std::atomic<double>> now_;
    std::shared_ptr<platform::Environment> environment_;
};

}  // namespace test
