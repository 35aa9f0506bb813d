#include <HbrCore/Stores/ContactsStore.h>

#include <gmock/gmock.h>
#include <support/LogCapture.h>

#include "../CoreFixture.h"

namespace hbr {
namespace {

/// An address book that fails on request and remembers nothing.
class FailingContacts final : public platform::CNContactStoring {
  public:
    platform::CNAuthorizationStatus authorizationStatus() const override { return status; }
    void requestAccess(const AccessCompletion& completion) override { completion(isGranted, error); }
    std::vector<platform::CNContact> unifiedContacts(
        const platform::ContactPredicate& predicate,
        const std::vector<platform::CNContactKey>&) const override {
        if (predicate.email == "broken@x.org") throw std::runtime_error("broken");
        return {
            {.identifier = "first", .givenName = "Given", .familyName = "Family", .thumbnailImageData = {}},
            {.identifier = "second", .givenName = "", .familyName = "", .thumbnailImageData = {}}};
    }

    platform::CNAuthorizationStatus status = platform::CNAuthorizationStatus::authorized;
    bool isGranted = true;
    std::exception_ptr error;
};

Event::ParticipantData data(std::optional<std::string> name, std::optional<std::string> email,
                            bool isOrganizer = false) {
    return {.name = name,
            .email = email,
            .contactPredicate = {.email = email.value_or(""), .name = name.value_or("")},
            .isOrganizer = isOrganizer,
            .status = ParticipantStatus::accepted};
}

Event eventWith(std::vector<Event::ParticipantData> participants) {
    Event event;
    event.participantsData = std::move(participants);
    return event;
}

class ContactsStoreTest : public ::testing::Test {
  protected:
    ContactsStoreTest() { platform::Environment::setCurrent(core.environment.ref()); }

    test::CoreFixture core;
};

TEST_F(ContactsStoreTest, NamesComeFromTheCardsElseFromTheCalendar) {
    core.contacts("people");
    core.environment.home.write("people/a.vcf",
                                "BEGIN:VCARD\nUID:ada\nN:Lovelace;Ada\nEMAIL:Ada@X.org\n"
                                "PHOTO;ENCODING=b:iVBORw0KGgo=\nEND:VCARD\n"
                                "BEGIN:VCARD\nUID:bob\nN:;Bob\nEMAIL:bob@x.org\nEND:VCARD\n"
                                "BEGIN:VCARD\nUID:bob2\nN:;Robert\nEMAIL:bob@x.org\nEND:VCARD\n");
    ContactsStore& contacts = core.services().contacts();
    EXPECT_TRUE(contacts.hasContactsAccess());
    const Event event = eventWith({data("Countess", "ada@x.org", true), data("Countess", "ada@x.org"),
                                   data("Countess", "ada@x.org"), data(std::nullopt, "bob@x.org"),
                                   data(" Carl \n", std::nullopt), data(std::nullopt, "d@x.org"),
                                   data(std::nullopt, std::nullopt)});
    const auto participants = contacts.participants(event);
    std::vector<std::string> shown;
    for (const auto& one : participants)
        shown.push_back(one.displayName());
    EXPECT_THAT(shown, testing::ElementsAre("Ada Lovelace (organizer)", "Ada Lovelace", "Bob", "Carl",
                                            "d@x.org", "unknown"));
    EXPECT_EQ(participants[0].id, "ada");
    EXPECT_EQ(participants[0].fallbackName, "Countess");
    EXPECT_EQ(participants[0].email, "ada@x.org");
    EXPECT_TRUE(participants[0].image);
    EXPECT_EQ(participants[2].id, "bob");
    EXPECT_FALSE(participants[2].image);
    EXPECT_FALSE(participants[3].givenName);
    EXPECT_TRUE(platform::Uuid::parse(participants[3].id));
    EXPECT_NE(contacts.participants(event)[3].id, participants[3].id);
}

TEST_F(ContactsStoreTest, AFailingQueryFindsNobodyForThatParticipantOnly) {
    const ContactsStore contacts(std::make_shared<FailingContacts>());
    const auto participants =
        contacts.participants(eventWith({data("Broken", "broken@x.org"), data("Fine", "fine@x.org")}));
    ASSERT_EQ(participants.size(), 2u);
    EXPECT_EQ(participants[0].displayName(), "Broken");
    EXPECT_EQ(participants[1].id, "first");
}

TEST_F(ContactsStoreTest, ARequestForAccessReportsItsResult) {
    auto platformStore = std::make_shared<FailingContacts>();
    platformStore->status = platform::CNAuthorizationStatus::denied;
    ContactsStore contacts(platformStore);
    EXPECT_FALSE(contacts.hasContactsAccess());
    const auto ask = [&]() -> std::string {
        std::string outcome = "not completed";
        contacts.requestAccess([&](std::exception_ptr error) {
            try {
                if (error) std::rethrow_exception(error);
                outcome = "granted";
            } catch (const ContactsError& refusal) {
                outcome = refusal.code() == ContactsError::Code::accessNotGranted ? "refused" : "other";
            } catch (const std::exception& other) {
                outcome = other.what();
            }
        });
        return outcome;
    };
    const test::LogCapture log;
    EXPECT_EQ(ask(), "granted");
    EXPECT_THAT(log.lines(), testing::ElementsAre("INFO [Contacts]: Requesting Contacts access",
                                                  "INFO [Contacts]: Contacts access granted"));
    EXPECT_TRUE(contacts.hasContactsAccess());
    platformStore->error = std::make_exception_ptr(std::runtime_error("out of order"));
    platformStore->isGranted = false;
    EXPECT_EQ(ask(), "out of order");
    EXPECT_TRUE(contacts.hasContactsAccess());
    platformStore->error = nullptr;
    EXPECT_EQ(ask(), "refused");
    EXPECT_FALSE(contacts.hasContactsAccess());
}

}  // namespace
}  // namespace hbr
