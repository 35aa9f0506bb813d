#include <ContactStore/CNContactStore.h>

#include <gmock/gmock.h>
#include <support/TestEnvironment.h>
#include <support/Threads.h>

#include <sys/stat.h>

namespace platform {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::vector<CNContactKey> everything = {CNContactGivenNameKey, CNContactFamilyNameKey,
                                              CNContactThumbnailImageDataKey};
/// Base64 of the bytes that a PNG file begins with.
const std::string png = "iVBORw0KGgo=";

/// A card of these lines between BEGIN and END.
std::string card(std::string_view lines, std::string_view version = "3.0") {
    return "BEGIN:VCARD\r\nVERSION:" + std::string(version) + "\r\n" + std::string(lines) + "END:VCARD\r\n";
}

class CNContactStoreTest : public ::testing::Test {
  protected:
    /// Over the sources named so, each a folder or file of the home.
    CNContactStore& open(std::vector<std::string> names = {"contacts"}) {
        sources = std::move(names);
        store = std::make_unique<CNContactStore>(
            environment, ContactSources{[this] {
                                            std::vector<ContactSource> list;
                                            for (const auto& name : sources)
                                                list.push_back({name, environment.home / name});
                                            return list;
                                        },
                                        environment->configDirectory / "accounts.toml"});
        return *store;
    }
    std::vector<CNContact> find(std::string email, std::string name = "") const {
        return store->unifiedContacts({std::move(email), std::move(name)}, everything);
    }
    /// "Given|Family" of each match.
    std::vector<std::string> names(std::string email, std::string name = "") const {
        std::vector<std::string> list;
        for (const auto& contact : find(std::move(email), std::move(name)))
            list.push_back(contact.givenName + "|" + contact.familyName);
        return list;
    }
    std::string diagnostics() const { return environment.reports(); }

    test::TestEnvironment environment;
    std::vector<std::string> sources;
    std::unique_ptr<CNContactStore> store;
};

TEST_F(CNContactStoreTest, ReadsNamesAsEveryVersionWritesThem) {
    const std::string cases[][2] = {
        {card("FN:Ada "
              "Lovelace\r\nN:Lovelace;Ada;King;Lady;\r\nitem1.EMAIL;type=INTERNET;type=pref:a@x.org\r\n"),
         "Ada|Lovelace"},
        {card("N;CHARSET=ISO-8859-1:M\xFCller;J\xF6rg\r\nEMAIL;INTERNET;PREF:a@x.org\r\n", "2.1"),
         "Jörg|Müller"},
        {card("N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:M=C3=BC=\r\n ller=3B;J=C3=B6rg=\r\n=20K.\r\n"
              "EMAIL:a@x.org\r\n",
              "2.1"),
         "Jörg K.|Mü ller;"},
        {card("N;QUOTED-PRINTABLE;CHARSET=koi8-r:;=F0=D2=C9\r\nEMAIL:a@x.org\r\n", "2.1"), "При|"},
        {card("N;CHARSET=Shift_JIS:\x8E\x52\x93\x63;\x91\xBE\x98\x59\r\nEMAIL:a@x.org\r\n", "2.1"),
         "太郎|山田"},
        {card("N:Stevenson\\, Esq\\;;John;Philip,Paul;Dr.;Jr.,M.D.\r\nEMAIL;PREF=1:mailto:a@x.org\r\n",
              "4.0"),
         "John|Stevenson, Esq;"},
        {card("FN:Long\r\nN;X-NOTE=\"a:b;c\":Long\r\n er;Na\r\n\tme\r\nEMAIL:a@x.org\r\n"), "Name|Longer"},
        {card("FN;PREF=2:Other Name\r\nFN;PREF=1:Maria José de la Cruz\r\nEMAIL:a@x.org\r\n", "4.0"),
         "Maria José|de la Cruz"},
        {card("FN:山田 太郎\r\nEMAIL:a@x.org\r\n", "4.0"), "太郎|山田"},
        {card("NICKNAME:Countess,Lady\r\nEMAIL:a@x.org\r\n", "4.0"), "Countess|"},
        {card("FN:Acme Works\r\nN:;;;;\r\nORG:Acme Works;Sales\r\nEMAIL:a@x.org\r\n"), "|"},
        {card("ORG:Acme\r\nEMAIL:a@x.org\r\n"), "|"},
        {card("KIND:group\r\nFN:Chess Club\r\nEMAIL:a@x.org\r\n", "4.0"), "|"},
        {card("EMAIL:a@x.org\r\n"), "|"},
        {card("AGENT:\r\nBEGIN:VCARD\r\nN:Agent;An\r\nEMAIL:b@x.org\r\nEND:VCARD\r\nN:Boss;The\r\n"
              "EMAIL:a@x.org\r\n",
              "2.1"),
         "The|Boss"},
        {"\xEF\xBB\xBF" + card("N:Mark;Order\r\nEMAIL:a@x.org\r\n"), "Order|Mark"},
        {std::string("\xFF\xFE") +
             [] {
                 std::string wide;
                 for (const char c : card("N:Wide;Very\nEMAIL:a@x.org\n"))
                     wide += {c, '\0'};
                 return wide;
             }(),
         "Very|Wide"},
        {"begin:vcard\nversion:3.0\nn:Lower;Case\nemail:a@x.org\nend:vcard", "Case|Lower"},
    };
    for (const auto& [text, expected] : cases) {
        environment.home.write("contacts/one.vcf", text);
        open();
        EXPECT_THAT(names("a@x.org"), ElementsAre(expected)) << text;
    }
    EXPECT_EQ(diagnostics(), "");
}

TEST_F(CNContactStoreTest, FindsByAddressElseByNameWithoutRegardToLetterCase) {
    environment.home.write(
        "contacts/all.vcf",
        card("UID:1\r\nFN:John Harper\r\nN:Harper;John\r\nEMAIL:John.Harper@Example.ORG\r\n"
             "EMAIL;TYPE=HOME:jh@home.example\r\n") +
            card("UID:2\r\nFN:Zoe\u0308 Élan\r\nN:Élan;Zoë\r\nNICKNAME:Zo\r\n") +
            card("UID:3\r\nFN:John Harper\r\nEMAIL:other@example.org\r\n") +
            card("UID:4\r\nORG:Acme;Sales\r\nEMAIL:Ärzte@example.org\r\n"));
    open();
    const std::tuple<std::string, std::string, std::vector<std::string>> cases[] = {
        {"john.harper@example.org", "", {"1"}},
        {" JH@HOME.EXAMPLE ", "", {"1"}},
        {"äRZTE@example.org", "", {"4"}},
        {"unknown@example.org", " john \u00A0HARPER", {"1", "3"}},
        {"", "Harper, John", {"1", "3"}},
        {"", "other@example.org", {"3"}},
        {"", "ZOË élan", {"2"}},
        {"", "zo", {"2"}},
        {"", "acme", {"4"}},
        {"other@example.org", "Zo", {"3"}},
        {"", "", {}},
        {"nobody@example.org", "Nobody", {}},
    };
    for (const auto& [email, name, identifiers] : cases) {
        std::vector<std::string> found;
        for (const auto& contact : find(email, name))
            found.push_back(contact.identifier);
        EXPECT_EQ(found, identifiers) << email << " " << name;
    }
}

TEST_F(CNContactStoreTest, GivesAPictureOnlyFromBytesThatAreOne) {
    const std::string jpeg = "/9j/4AAQ";
    const std::tuple<std::string, std::string, bool, std::string> cases[] = {
        {"PHOTO;ENCODING=b;TYPE=PNG:" + png + "\r\n", "3.0", true, ""},
        {"PHOTO;JPEG;BASE64:\r\n /9j\r\n /4A\r\n AQ\r\n\r\n", "2.1", true, ""},
        {"PHOTO;ENCODING=BASE64;TYPE=JPEG:\r\n/9j/\r\n4AAQ\r\n\r\n", "2.1", true, ""},
        {"PHOTO:data:image/png;base64,iVBO\r\n Rw0KGgo=\r\n", "4.0", true, ""},
        {"PHOTO;VALUE=uri:data:image/jpeg;base64\\," + jpeg + "\r\n", "4.0", true, ""},
        {"PHOTO;VALUE=uri:http://192.0.2.1/a.png\r\nPHOTO:data:image/png;base64," + png + "\r\n", "4.0", true,
         ""},
        {"PHOTO;VALUE=uri:http://192.0.2.1/a.png\r\n", "4.0", false, ""},
        {"PHOTO:https://192.0.2.1/a.png\r\n", "4.0", false, ""},
        {"NOTE:x\r\nPHOTO;ENCODING=b:iVBO*w0KGgo=\r\n", "3.0", false, "one.vcf:6: PHOTO: is not readable"},
        {"PHOTO;ENCODING=b:SGVsbG8=\r\n", "3.0", false, "PHOTO: is not a picture"},
        {"PHOTO;ENCODING=b:iVBORw0KGgoAAAANSUhEUgAAG1gAABtY\r\n", "3.0", false,
         "PHOTO: takes too long to decode (7000 × 7000 pixels); left out"},
        {"PHOTO;ENCODING=b:\r\n", "3.0", false, "PHOTO: is not readable base64"},
        {"PHOTO:data:image/svg+xml,%3Csvg/%3E\r\n", "4.0", false, "PHOTO: is not readable base64"},
    };
    for (const auto& [photo, version, isPicture, complaint] : cases) {
        environment.diagnostics = std::make_shared<CollectedDiagnostics>();
        environment.change().diagnostics = environment.diagnostics;
        environment.home.write("contacts/one.vcf", "\r\n" + card("EMAIL:a@x.org\r\n" + photo, version));
        open();
        const auto found = find("a@x.org");
        ASSERT_EQ(found.size(), 1u) << photo;
        EXPECT_EQ(found[0].thumbnailImageData.has_value(), isPicture) << photo;
        EXPECT_THAT(diagnostics(), HasSubstr(complaint)) << photo;
        EXPECT_EQ(diagnostics().empty(), complaint.empty()) << diagnostics();
    }
    environment.home.write("contacts/one.vcf", card("EMAIL:a@x.org\r\nPHOTO;ENCODING=b:" + png + "\r\n"));
    open();
    EXPECT_FALSE(store->unifiedContacts({"a@x.org", ""}, {CNContactGivenNameKey})[0].thumbnailImageData);
    EXPECT_EQ(find("a@x.org")[0].thumbnailImageData->format(), ImageBytes::Format::png);
}

TEST_F(CNContactStoreTest, APictureThatIsTooLargeIsLeftOutAndTheCardIsKept) {
    environment.home.write("contacts/one.vcf",
                           card("EMAIL:a@x.org\r\nPHOTO;ENCODING=b:" +
                                std::string(std::size_t{15} << 20, 'A') + "\r\nN:Large;Very\r\n"));
    open();
    EXPECT_THAT(names("a@x.org"), ElementsAre("Very|Large"));
    EXPECT_FALSE(find("a@x.org")[0].thumbnailImageData);
    EXPECT_THAT(diagnostics(), HasSubstr("one.vcf:4: PHOTO: is too long"));
}

TEST_F(CNContactStoreTest, ABadCardIsLeftOutAloneWithFileAndLine) {
    const std::string good = card("N:Good;Very\r\nEMAIL:good@x.org\r\n");
    environment.home.write("contacts/bad.vcf", "BEGIN:VCARD\r\nN:Never;Ended\r\n" + good +
                                                   card("NOTE:nothing else\r\n") + "END:VCARD\r\n" +
                                                   card("N:Odd;One\r\nno property\r\nEMAIL:odd@x.org\r\n") +
                                                   "BEGIN:VCARD\r\nEMAIL:cut@x.org\r\n");
    environment.home.write("contacts/text.vcf", "just text\n");
    environment.home.write("contacts/.hidden.vcf", card("EMAIL:hidden@x.org\r\n"));
    environment.home.write("contacts/other.txt", card("EMAIL:other@x.org\r\n"));
    environment.home.write("contacts/friends/DEEP.VCF", card("N:Deep;Very\r\nEMAIL:deep@x.org\r\n"));
    ASSERT_EQ(mkfifo((environment.home / "contacts/pipe.vcf").c_str(), 0600), 0);
    open();
    EXPECT_THAT(names("good@x.org"), ElementsAre("Very|Good"));
    EXPECT_THAT(names("odd@x.org"), ElementsAre("One|Odd"));
    EXPECT_THAT(names("deep@x.org"), ElementsAre("Very|Deep"));
    for (const char* absent : {"hidden@x.org", "other@x.org", "cut@x.org"})
        EXPECT_THAT(names(absent), IsEmpty()) << absent;
    for (const char* complaint :
         {"bad.vcf:1: VCARD: has no END:VCARD", "bad.vcf:8: VCARD: has neither a name nor an address",
          "bad.vcf:12: VCARD: END:VCARD without its BEGIN", "bad.vcf:16: is not a property",
          "bad.vcf:19: VCARD: has no END:VCARD", "text.vcf: holds no card",
          "pipe.vcf: is not a regular file"}) {
        EXPECT_THAT(diagnostics(), HasSubstr(complaint));
    }
    EXPECT_EQ(store->report()[0].cards, 3u);
}

TEST_F(CNContactStoreTest, ACardKeepsAThousandAddressesAndSaysThatThereAreMore) {
    std::string lines = "N:One;Many\r\n";
    for (int i = 1; i <= 1001; ++i)
        lines += "EMAIL:" + std::to_string(i) + "@x.org\r\n";
    environment.home.write("contacts/many.vcf", card(lines) + card("NICKNAME:a\r\nEMAIL:few@x.org\r\n"));
    open();
    EXPECT_THAT(names("1000@x.org"), ElementsAre("Many|One"));
    EXPECT_THAT(names("1001@x.org"), IsEmpty());
    EXPECT_THAT(diagnostics(), HasSubstr("many.vcf:1: VCARD: has more than 1000 addresses or nicknames"));
    EXPECT_THAT(diagnostics(), Not(HasSubstr("many.vcf:1006")));
}

TEST_F(CNContactStoreTest, AccessIsGivenWhenOneSourceCanBeRead) {
    bool isGranted = true;
    const auto ask = [&] { store->requestAccess([&](bool granted, auto) { isGranted = granted; }); };
    open({});
    EXPECT_EQ(store->authorizationStatus(), CNAuthorizationStatus::notDetermined);
    open({"missing"});
    EXPECT_EQ(store->authorizationStatus(), CNAuthorizationStatus::denied);
    ask();
    EXPECT_FALSE(isGranted);
    open({"missing", "there.vcf"});
    environment.home.write("there.vcf", card("N:There;Is\r\nEMAIL:a@x.org\r\n"));
    EXPECT_EQ(store->authorizationStatus(), CNAuthorizationStatus::authorized);
    EXPECT_THAT(names("a@x.org"), ElementsAre("Is|There"));
    environment.home.write("there.vcf", card("N:Changed;Is\r\nEMAIL:a@x.org\r\n"));
    ask();
    EXPECT_TRUE(isGranted);
    EXPECT_THAT(names("a@x.org"), ElementsAre("Is|Changed"));
}

TEST_F(CNContactStoreTest, WhatChangesWhileWatchedShowsInTheNextAnswer) {
    environment.home.write("contacts/one.vcf", card("N:One;A\r\nEMAIL:a@x.org\r\n"));
    open().startWatching();
    EXPECT_THAT(names("a@x.org"), ElementsAre("A|One"));
    const auto eventually = [&](const std::string& email, const std::string& expected) {
        return test::eventually([&] { return names(email) == std::vector{expected}; });
    };
    environment.home.write("contacts/one.vcf", card("N:Two;A\r\nEMAIL:a@x.org\r\n"));
    EXPECT_TRUE(eventually("a@x.org", "A|Two"));
    environment.home.write("contacts/new/three.vcf", card("N:Three;B\r\nEMAIL:b@x.org\r\n"));
    EXPECT_TRUE(eventually("b@x.org", "B|Three"));
    environment.home.write("contacts/new/three.vcf", card("N:Four;B\r\nEMAIL:b@x.org\r\n"));
    EXPECT_TRUE(eventually("b@x.org", "B|Four"));
}

TEST_F(CNContactStoreTest, SeveralThreadsMayAsk) {
    std::string text;
    for (int i = 0; i < 200; ++i) {
        text += card("N:Family;Given\r\nEMAIL:p" + std::to_string(i) + "@x.org\r\nPHOTO;ENCODING=b:" + png +
                     "\r\n");
    }
    environment.home.write("contacts/all.vcf", text);
    open();
    std::atomic<int> found = 0;
    test::onThreads(4, [&](int) {
        for (int i = 0; i < 200; i += 5) {
            if (i % 50 == 0) store->requestAccess(nullptr);
            const auto contacts = find("P" + std::to_string(i) + "@x.org");
            if (contacts.size() == 1 && contacts[0].thumbnailImageData) ++found;
        }
    });
    EXPECT_EQ(found, 160);
}

}  // namespace
}  // namespace platform
