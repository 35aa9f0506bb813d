#include "Journey.h"

namespace {

class ConferenceServicesOfTheUser : public test::Journey {
  protected:
    static std::string entry(const std::string& id, const std::string& regex) {
        return "<dict><key>id</key><string>" + id + "</string><key>regex</key><string>" + regex +
               "</string><key>name</key><string>N</string><key>supportsNativeApp</key><false/></dict>";
    }
    void writeCopy(const std::string& entries) {
        home.write(copy, R"(<plist version="1.0"><array>)" + entries + "</array></plist>");
    }
    void expectService(const std::string& link, const std::string& service) {
        home.write("notes.txt", "See you in " + link + ".");
        expect("links ~/notes.txt", {service});
    }

    const std::string copy = "data/heedbanner/ConferenceServices.plist";
};

TEST_F(ConferenceServicesOfTheUser, AServiceOfTheirOwnIsFoundAfterTheBuiltInOnes) {
    writeCopy(entry("acmeRooms", "https://rooms\\.acme\\.example/[0-9]+") +
              entry("mine", "https://zoom\\.us/") + entry("bad", "https://("));
    for (const auto& [link, service] : {std::pair("https://rooms.acme.example/42", "\"acmeRooms\""),
                                        {"https://zoom.us/j/1", "\"zoom\""},
                                        {"https://zoom.us/about", "\"mine\""},
                                        {"https://acme.example/42", "[]\n"}})
        expectService(link, service);
    expectEach({{"setup " + examples()}, {"doctor", 1, {"the pattern of \"bad\" does not compile"}}});
}

TEST_F(ConferenceServicesOfTheUser, DoctorSaysWhatTheShippedListHasAndTheCopyHasNot) {
    expectEach({{"setup " + examples()}, {"doctor", 0, {"!shipped list"}}});
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
    const auto idStart = taken.find("<string>") + 8;
    const auto id = taken.substr(idStart, taken.find("</string>") - idStart);
    expect("doctor", {"1 conference service of the shipped list is not in this copy: " + id + ";"});
    std::filesystem::remove(home / copy);
    expect("doctor", {"!shipped list"});
}

}  // namespace
