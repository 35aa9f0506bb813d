#include <HbrCore/ConferenceLinks/ConferenceServicesFile.h>

#include <Values/PropertyList.h>
#include <support/LogCapture.h>
#include <support/TestEnvironment.h>

#include <gmock/gmock.h>

#include <thread>

namespace {

using namespace hbr;
using testing::ElementsAre;
using testing::HasSubstr;

const VideoConferenceService mine{"mine", "https://call\\.example\\.org/[^\\s]+", "Mine", false};

std::string xml(const std::vector<VideoConferenceService>& services) {
    return platform::writeXmlPropertyList(encodeServices(services));
}

class ConferenceServicesFile : public testing::Test {
  protected:
    std::filesystem::path file() const { return world_->dataDirectory / "ConferenceServices.plist"; }
    void write(const std::string& content) {
        world_.home.write("data/heedbanner/ConferenceServices.plist", content);
    }
    std::vector<VideoConferenceService> loaded() {
        std::vector<VideoConferenceService> services{VideoConferenceService::zoom()};
        loadConfigFile(*world_.ref(), services);
        services.erase(services.begin());
        return services;
    }
    static std::vector<std::string> messages() {
        auto texts = test::LogCapture::lines();
        for (auto& text : texts)
            text.erase(0, text.find("[ConferenceLinks]: ") + 19);
        return texts;
    }

    const test::LogCapture log_;
    test::TestEnvironment world_;
};

TEST_F(ConferenceServicesFile, IsCopiedOnceAndNeverReplaced) {
    copyConfigFileIfNeeded(*world_.ref());
    EXPECT_GE(loaded().size(), 30U);
    EXPECT_THAT(messages(),
                ElementsAre("Copying conference services config file to file://" + file().string() + " …",
                            "  … success"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(world_->dataDirectory), {}), 1);

    write(xml({mine}));
    copyConfigFileIfNeeded(*world_.ref());
    EXPECT_THAT(loaded(), ElementsAre(mine));
    EXPECT_EQ(messages().size(), 2U);
}

TEST_F(ConferenceServicesFile, ManyCopyingAtOnceLeaveOneWholeFile) {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] { copyConfigFileIfNeeded(*world_.ref()); });
    threads.clear();
    EXPECT_GE(loaded().size(), 30U);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(world_->dataDirectory), {}), 1);
}

TEST_F(ConferenceServicesFile, IsUsedWholeOrNotAtAll) {
    const std::string head = R"(<?xml version="1.0"?><plist version="1.0">)";
    const std::string entry =
        "<dict><key>id</key><string>a</string><key>regex</key><string>b</string>"
        "<key>name</key><string>c</string>";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "not a property list"},
        {"garbage", "not a property list"},
        {head + "<dict/></plist>", "not a list"},
        {head + "<array><string>a</string></array></plist>", "entry 1 is not a dictionary"},
        {head + "<array>" + entry + "<key>supportsNativeApp</key><true/></dict>" + entry +
             "</dict></array></plist>",
         "entry 2 lacks \"supportsNativeApp\""},
        {head + "<array>" + entry + "<key>supportsNativeApp</key><integer>1</integer></dict></array></plist>",
         "not a boolean"}};
    for (const auto& [content, reason] : cases) {
        write(content);
        EXPECT_TRUE(loaded().empty()) << content;
        EXPECT_THAT(messages().back(),
                    testing::StartsWith("Could not decode conference services config file. Error: "));
        EXPECT_THAT(messages().back(), HasSubstr(reason));
        EXPECT_THAT(platform::describe(world_.diagnostics->all().back()), HasSubstr(file().string()));
    }
}

TEST_F(ConferenceServicesFile, SaysWhatIsMissing) {
    EXPECT_TRUE(loaded().empty());
    EXPECT_THAT(messages(),
                ElementsAre(HasSubstr("Could not decode conference services config file. Error: ")));
    world_.change().resourceDirectories.clear();
    copyConfigFileIfNeeded(*world_.ref());
    EXPECT_EQ(messages().back(), "could not find conference services config file in bundle");
    world_.change().dataDirectory.clear();
    EXPECT_EQ(configFileUrl(*world_.ref()), std::nullopt);
    copyConfigFileIfNeeded(*world_.ref());
    EXPECT_EQ(messages().back(), "could not create configFileUrl");
}

TEST_F(ConferenceServicesFile, SaysWhyItCouldNotBeCopied) {
    world_.home.write("blocked", "a file where a folder should be");
    world_.change().dataDirectory = world_.home / "blocked/heedbanner";
    copyConfigFileIfNeeded(*world_.ref());
    EXPECT_THAT(messages().back(),
                testing::StartsWith("Could not copy conference services config file. Error: "));
    world_.change().dataDirectory = world_.home / "data/heedbanner";
    std::filesystem::create_directories(world_->dataDirectory);
    std::filesystem::create_symlink("nowhere", file());
    copyConfigFileIfNeeded(*world_.ref());
    EXPECT_THAT(messages().back(),
                testing::EndsWith(file().string() + ": is a link to a file that is missing"));
    EXPECT_TRUE(std::filesystem::is_symlink(file()));
}

TEST_F(ConferenceServicesFile, NamesAPatternThatDoesNotCompileAndKeepsTheRest) {
    write(xml({{"bad", "https://(", "Bad", false}, mine}));
    EXPECT_EQ(loaded().size(), 2U);
    ASSERT_EQ(world_.diagnostics->all().size(), 1U);
    EXPECT_THAT(world_.diagnostics->all()[0].text, HasSubstr("\"bad\""));
}

}  // namespace
