#include <MxLogger/MxLogger.h>
#include <System/MainQueue.h>

#include <gtest/gtest.h>
#include <support/TestEnvironment.h>
#include <support/Threads.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

using namespace hbr;

namespace {

/// The log's settings are the process's own: every test starts from the first ones, at quarter past two in
/// the afternoon, with lines going to a file.
struct MxLoggerTest : testing::Test {
    MxLoggerTest() {
        platform::Environment::setCurrent(world());
        MxLogger::setDefaults(defaults);
        MxLogger::setOutput(output);
        MxLogger::setMinimumLevel(MxLogger::Level::info);
        MxLogger::setMaxLogLines(1000);
        MxLogger::clear();
    }
    ~MxLoggerTest() override {
        MxLogger::stop();
        MxLogger::setOutput(STDOUT_FILENO);
        MxLogger::setDefaults(nullptr);
        close(output);
    }
    /// One world for all tests, as the log keeps the first that it sees.
    static platform::EnvironmentRef world() {
        static test::TestEnvironment environment("2024-03-05T13:15:07Z");
        return environment;
    }
    std::optional<platform::PropertyValue> stored() const { return defaults->value("MxLogger.isLogging"); }

    test::TemporaryDirectory folder;
    platform::DefaultsDomainRef defaults =
        std::make_shared<platform::DefaultsDomain>(folder / "standard.plist", nullptr);
    int output = open((folder / "log").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
};

}  // namespace

TEST_F(MxLoggerTest, ALineHasItsStampMarkerCategoryAndMessage) {
    MxLogger::start(true);
    MxLogger::setMinimumLevel(MxLogger::Level::debug);
    MxLogger::debug("a");
    MxLogger::info(LogCategory::conferenceLinks, "b");
    MxLogger::warning(LogCategory{"EventKit"}, "c: d");
    MxLogger::error(std::nullopt, "");
    const std::vector<std::string> lines = {
        "2024-03-05 02:15:07 🟢 DEBUG: a",
        "2024-03-05 02:15:07 🔵 INFO [ConferenceLinks]: b",
        "2024-03-05 02:15:07 🟡 WARNING [EventKit]: c: d",
        "2024-03-05 02:15:07 🔴 ERROR: ",
    };
    EXPECT_EQ(MxLogger::logMessages(), lines);
    std::string joined = lines[0] + "\n" + lines[1] + "\n" + lines[2] + "\n" + lines[3];
    EXPECT_EQ(MxLogger::logString(), joined);
    EXPECT_EQ(test::readFile(folder / "log"), joined + "\n");
    MxLogger::setOutput(STDOUT_FILENO);
    testing::internal::CaptureStdout();
    MxLogger::info("seen");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "2024-03-05 02:15:07 🔵 INFO: seen\n");
}

TEST_F(MxLoggerTest, NothingIsRecordedWhenOffOrBelowTheLevel) {
    MxLogger::error("off");
    MxLogger::start(true);
    MxLogger::debug("below");
    MxLogger::setMinimumLevel(MxLogger::Level::warning);
    MxLogger::info("below");
    MxLogger::error("above");
    EXPECT_EQ(MxLogger::logMessages().size(), 1u);
    EXPECT_EQ(std::ranges::count(test::readFile(folder / "log"), '\n'), 1);
    EXPECT_EQ(MxLogger::levelFromRawValue(3), MxLogger::Level::error);
    EXPECT_FALSE(MxLogger::levelFromRawValue(4));
    EXPECT_FALSE(MxLogger::levelFromRawValue(-1));
}

TEST_F(MxLoggerTest, TheSwitchIsStoredAndTakenUpAgainUnlessForced) {
    EXPECT_FALSE(stored());
    MxLogger::start(false);
    EXPECT_FALSE(MxLogger::isLogging());
    EXPECT_EQ(stored(), platform::PropertyValue(false));
    MxLogger::start(true);
    EXPECT_EQ(stored(), platform::PropertyValue(true));
    MxLogger::start(false);
    EXPECT_TRUE(MxLogger::isLogging());
    MxLogger::stop();
    EXPECT_EQ(stored(), platform::PropertyValue(false));
    MxLogger::setIsLogging(true);
    EXPECT_EQ(stored(), platform::PropertyValue(true));
    defaults->setValue("MxLogger.isLogging", "true");
    MxLogger::start(false);
    EXPECT_FALSE(MxLogger::isLogging());
}

TEST_F(MxLoggerTest, EachLineAboveTheLimitRemovesTheOldestOne) {
    MxLogger::start(true);
    for (int i = 0; i <= 1000; ++i)
        MxLogger::info(std::to_string(i));
    EXPECT_EQ(MxLogger::logMessages().size(), 1000u);
    EXPECT_TRUE(MxLogger::logMessages().front().ends_with(": 1"));
    MxLogger::setMaxLogLines(10);
    MxLogger::info("more");
    EXPECT_EQ(MxLogger::logMessages().size(), 1000u);
    EXPECT_TRUE(MxLogger::logMessages().front().ends_with(": 2"));
}

TEST_F(MxLoggerTest, TheTargetGetsTheWholeTextOnTheMainThreadForEveryLineOfAnyThread) {
    struct Target final : LogTarget {
        void logTextDidChange(const std::string& text) override {
            EXPECT_TRUE(platform::MainQueue::shared().isCurrent());
            texts.push_back(text);
        }
        std::vector<std::string> texts;
    };
    auto runOthersWork = [] { platform::MainQueue::shared().runUntil([] { return false; }, 0); };
    runOthersWork();
    auto target = std::make_shared<Target>();
    MxLogger::setLogTarget(target);
    MxLogger::start(true);
    test::onThreads(4, [](int) {
        for (int k = 0; k < 50; ++k)
            MxLogger::info(LogCategory::eventKit, "line");
    });
    EXPECT_EQ(MxLogger::logMessages().size(), 200u);
    EXPECT_TRUE(platform::MainQueue::shared().runUntil([&] { return target->texts.size() == 200; }, 20));
    EXPECT_EQ(target->texts.back(), MxLogger::logString());
    MxLogger::clear();
    EXPECT_EQ(MxLogger::logString(), "");
    runOthersWork();
    EXPECT_EQ(target->texts.size(), 200u);

    target.reset();
    MxLogger::info("nobody watches");
    runOthersWork();
}
