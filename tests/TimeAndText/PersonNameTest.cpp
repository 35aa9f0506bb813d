#include <TimeAndText/PersonName.h>

#include <gtest/gtest.h>

namespace platform {
namespace {

constexpr PersonNameComponentsFormatter full(PersonNameComponentsFormatter::Style::default_);
constexpr PersonNameComponentsFormatter abbreviated(PersonNameComponentsFormatter::Style::abbreviated);

TEST(PersonName, AWrittenNameIsDividedByTheRulesOfItsScript) {
    const char* const cases[][3] = {
        {"John Harper", "John Harper", "JH"},
        {"  john \u00A0 harper ", "john harper", "JH"},
        {"Ludwig van Beethoven", "Ludwig van Beethoven", "LV"},
        {"Harper, John Q.", "John Harper", "JH"},
        {"de la Cruz, Maria", "Maria de la Cruz", "MD"},
        {"Dr. Maria José de la Cruz", "Maria de la Cruz", "MD"},
        {"Prof. Dr. Ada Lovelace", "Ada Lovelace", "AL"},
        {"Lovelace, Ada, Dr.", "Ada Lovelace", "AL"},
        {"Sammy Davis Jr.", "Sammy Davis", "SD"},
        {"Sammy Davis, Jr.", "Sammy Davis", "SD"},
        {"Davis, Sammy, Jr.", "Sammy Davis", "SD"},
        {"John Harper, Ph.D.", "John Harper", "JH"},
        {"Don Draper MD", "Don Draper", "DD"},
        {"Li Pe", "Li Pe", "LP"},
        {"Henry VIII", "Henry", "H"},
        {"Van Morrison", "Van Morrison", "VM"},
        {"Madonna", "Madonna", "M"},
        {"Dr.", "Dr.", "D"},
        {"Jean-Luc Picard", "Jean-Luc Picard", "JP"},
        {"John Harper (Sales) <john@example.com>", "John Harper", "JH"},
        {"\"Harper, John\"", "John Harper", "JH"},
        {"🎉 Ada Lovelace 🎉", "Ada Lovelace", "AL"},
        {"jane@example.com", "jane@example.com", "J"},
        {"Élodie E\u0301toile", "Élodie E\u0301toile", "ÉE\u0301"},
        {"Анна Каренина", "Анна Каренина", "АК"},
        {"山田 太郎", "山田太郎", "山田"},
        {"山田\u3000太郎", "山田太郎", "山田"},
        {"山田太郎", "山田太郎", "山"},
        {"ジョン・スミス", "ジョン・スミス", "ジス"},
        {"김 민수", "김민수", "김"},
        {"김민수", "김민수", "김"},
        {"محمد علي", "محمد علي", "م ع"},
        {"דוד לוי", "דוד לוי", "ד ל"},
        {"\xff John Harper", "John Harper", "JH"},
    };
    for (const auto& [written, fullName, initials] : cases) {
        const auto name = abbreviated.personNameComponents(written);
        ASSERT_TRUE(name) << written;
        EXPECT_EQ(full.string(*name), fullName) << written;
        EXPECT_EQ(abbreviated.string(*name), initials) << written;
    }
}

TEST(PersonName, NothingIsReadFromATextWithoutLetters) {
    for (const char* text : {"", " \n", "42 17", "👨‍👩‍👧‍👦 🎉", "(–)", ",,"})
        EXPECT_FALSE(abbreviated.personNameComponents(text)) << text;
}

TEST(PersonName, GivenPartsStayWholeInTheOrderOfTheirScript) {
    const std::tuple<PersonNameComponents, const char*, const char*> cases[] = {
        {{.givenName = "ada", .familyName = "lovelace"}, "ada lovelace", "AL"},
        {{.givenName = "Maria José", .familyName = "de la Cruz"}, "Maria José de la Cruz", "MD"},
        {{.givenName = "太郎", .familyName = "山田"}, "山田太郎", "山田"},
        {{.givenName = "민수", .familyName = "김"}, "김민수", "김"},
        {{.givenName = "John", .familyName = "山田"}, "John 山田", "J山"},
        {{.familyName = "Harper"}, "Harper", "H"},
        {{.givenName = "(Bob)", .familyName = "'t Hooft"}, "(Bob) 't Hooft", "BT"},
        {{}, "", ""},
    };
    for (const auto& [name, fullName, initials] : cases) {
        EXPECT_EQ(full.string(name), fullName);
        EXPECT_EQ(abbreviated.string(name), initials) << fullName;
    }
}

}  // namespace
}  // namespace platform
