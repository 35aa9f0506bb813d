#include <HbrCore/Events/Participant.h>

#include <gtest/gtest.h>
#include <support/TestEnvironment.h>

namespace hbr {
namespace {

class ParticipantTest : public ::testing::Test {
  protected:
    ParticipantTest() { platform::Environment::setCurrent(environment.ref()); }

    static Participant with(std::optional<std::string> given, std::optional<std::string> family,
                            std::string fallback, bool isOrganizer = false) {
        return {.id = "1",
                .givenName = std::move(given),
                .familyName = std::move(family),
                .email = std::nullopt,
                .fallbackName = std::move(fallback),
                .image = std::nullopt,
                .isOrganizer = isOrganizer,
                .status = ParticipantStatus::accepted};
    }

    test::TestEnvironment environment;
};

TEST_F(ParticipantTest, IsCalledByTheContactsNamesElseByWhatTheCalendarSays) {
    const std::tuple<Participant, const char*, const char*> cases[] = {
        {with("ada ", " lovelace\n", "Countess"), "ada lovelace", "AL"},
        {with("Ada", std::nullopt, "Countess"), "Ada", "A"},
        {with("太郎", "山田", "taro@example.org"), "山田太郎", "山田"},
        // Contacts without names, as organizations are.
        {with("", "", "Acme Works"), "Acme Works", "AW"},
        {with(" ", std::nullopt, " x9 "), " x9 ", "X"},
        {with(std::nullopt, std::nullopt, "Harper, John Q."), "Harper, John Q.", "JH"},
        {with(std::nullopt, std::nullopt, "jane@example.org"), "jane@example.org", "J"},
        {with(std::nullopt, std::nullopt, "42 17"), "42 17", "42"},
        {with(std::nullopt, std::nullopt, "👨‍👩‍👧‍👦🎉🎉"),
         "👨‍👩‍👧‍👦🎉🎉", "👨‍👩‍👧‍👦🎉"},
        {with(std::nullopt, std::nullopt, ""), "unknown", "–"},
        {with("", "", ""), "unknown", "–"},
        {with("Ada", "Lovelace", "", true), "Ada Lovelace (organizer)", "AL"},
        {with(std::nullopt, std::nullopt, "", true), "unknown (organizer)", "–"}};
    for (const auto& [participant, displayName, initials] : cases) {
        EXPECT_EQ(participant.displayName(), displayName);
        EXPECT_EQ(participant.initials(), initials) << displayName;
    }
}

TEST_F(ParticipantTest, IsEqualByIdOrAddressAndHashedByEveryField) {
    const auto named = [](const char* id, std::optional<std::string> email) {
        Participant participant = with("A", std::nullopt, "");
        participant.id = id;
        participant.email = std::move(email);
        return participant;
    };
    EXPECT_EQ(named("1", "a@x.org"), named("1", "b@x.org"));
    EXPECT_EQ(named("1", "a@x.org"), named("2", "a@x.org"));
    EXPECT_FALSE(named("1", "a@x.org") == named("2", "A@x.org"));
    EXPECT_FALSE(named("1", std::nullopt) == named("2", std::nullopt));

    const std::hash<Participant> hash;
    const Participant first = named("1", "a@x.org");
    EXPECT_EQ(hash(first), hash(named("1", "a@x.org")));
    Participant organizer = first;
    organizer.isOrganizer = true;
    Participant declined = first;
    declined.status = ParticipantStatus::declined;
    Participant moved = first;
    moved.familyName = std::exchange(moved.givenName, std::nullopt);
    for (const auto& other : {organizer, declined, moved}) {
        EXPECT_EQ(first, other);
        EXPECT_NE(hash(first), hash(other));
    }
}

}  // namespace
}  // namespace hbr
