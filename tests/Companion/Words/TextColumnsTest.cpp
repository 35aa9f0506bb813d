#include <Words/TextColumns.h>
#include <gtest/gtest.h>

namespace {

TEST(TextColumns, WideLettersAndEmojiTakeTwo) {
    const std::tuple<std::string, std::size_t, std::string> cases[] = {
        // The last is the text cut to five columns.
        {"", 0, ""},
        {"Lunch", 5, "Lunch"},
        {"Lunch!", 6, "Lunc…"},
        {"週次会議", 8, "週次…"},
        {"a週次会議", 9, "a週…"},
        {"Zoe\u0308 Q", 5, "Zoe\u0308 Q"},
        {"🍜 Lunch", 8, "🍜 L…"},
        {"☀️ Sun", 6, "☀️ S…"},
        {"⏰⭐️", 4, "⏰⭐️"},
        {"👩‍💻👍🏽🇩🇪", 6, "👩‍💻👍🏽…"},
        {"ab cd ef", 8, "ab c…"},
        {"abc defg", 8, "abc…"},
    };
    for (const auto& [text, width, cut] : cases) {
        EXPECT_EQ(hbr::columns(text), width) << text;
        EXPECT_EQ(hbr::truncatedToColumns(text, 5), cut) << text;
    }
}

}  // namespace
