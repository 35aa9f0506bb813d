#include "Journey.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;

class ConferenceServicesOfTheUser : public test::Journey {
  protected:
    static std::string entry(const std::string& id, const std::string& regex) {
        return "<dict><key>id</key><string>" + id + "</string><key>regex</key><string>" + regex +
               "</string><key>name</key><string>N</string><key>supportsNativeApp</key><false/></dict>";
    }
    void writeCopy(const std::string& entries) {
        home.write(copy, R"(<plist version="1.0"><array>)" + entries + "</array></plist>");
    }
    std::string serviceOf(const std::string& link) {
        home.write("notes.txt", "See you in " + link + ".");
        return companion({"links", home / "notes.txt"}).out;
    }

    const std::string copy = "data/heedbanner/ConferenceServices.plist";
};

TEST_F(ConferenceServicesOfTheUser, AServiceOfTheirOwnIsFoundAfterTheBuiltInOnes) {
    writeCopy(entry("acmeRooms", "https://rooms\\.acme\\.example/[0-9]+") +
              entry("mine", "https://zoom\\.us/"));
    EXPECT_THAT(serviceOf("https://rooms.acme.example/42"), HasSubstr("\"acmeRooms\""));
    EXPECT_THAT(serviceOf("https://zoom.us/j/1"), HasSubstr("\"zoom\""));
    EXPECT_THAT(serviceOf("https://zoom.us/about"), HasSubstr("\"mine\""));
    EXPECT_EQ(serviceOf("https://acme.example/42"), "[]\n");
}

TEST_F(ConferenceServicesOfTheUser, DoctorSaysWhatTheShippedListHasAndTheCopyHasNot) {
    ASSERT_EQ(companion({"setup", examples()}).exitCode, 0);
    EXPECT_THAT(companion({"doctor"}).out, Not(HasSubstr("shipped list")));

    auto list = test::readFile(home / copy);
    const auto begin = list.find("<dict>", list.find("</dict>"));
    const auto end = list.find("</dict>", begin) + 7;
    const auto taken = list.substr(begin, end - begin);
    list.erase(begin, end - begin);
    // Another pattern under a known identifier is the user's choice.
    const auto regex = list.find("https://", list.find("<dict>"));
    ASSERT_NE(regex, std::string::npos);
    list.insert(regex, "x?");
    home.write(copy, list);
    const auto doctor = companion({"doctor"});
    EXPECT_EQ(doctor.exitCode, 0) << doctor.out;
    const auto idStart = taken.find("<string>") + 8;
    const auto id = taken.substr(idStart, taken.find("</string>") - idStart);
    EXPECT_THAT(doctor.out,
                HasSubstr("1 conference service of the shipped list is not in this copy: " + id + ";"));

    std::filesystem::remove(home / copy);
    EXPECT_THAT(companion({"doctor"}).out, Not(HasSubstr("shipped list")));
}

TEST_F(ConferenceServicesOfTheUser, DoctorNamesAPatternThatDoesNotCompile) {
    ASSERT_EQ(companion({"setup", examples()}).exitCode, 0);
    writeCopy(entry("bad", "https://(") + entry("good", "https://good\\.example/"));
    EXPECT_THAT(serviceOf("https://good.example/1"), HasSubstr("\"good\""));
    const auto doctor = companion({"doctor"});
    EXPECT_EQ(doctor.exitCode, 1);
    EXPECT_THAT(doctor.out, HasSubstr("the pattern of \"bad\" does not compile"));
}

}  // namespace
