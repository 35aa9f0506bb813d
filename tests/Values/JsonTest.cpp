#include <Values/JsonText.h>
#include <Values/JsonValue.h>
#include <Values/KeyedDecoder.h>

#include <gtest/gtest.h>

using namespace platform;

TEST(Json, NumbersAreWrittenExactlyAndReadBackTheSame) {
    const std::pair<JsonValue, const char*> cases[] = {
        {60, "60"},
        {60.0, "60.0"},
        {0.1, "0.1"},
        {-0.0, "-0.0"},
        {1e15, "1000000000000000.0"},
        {1e22, "10000000000000000000000.0"},
        {794307600.123, "794307600.123"},
        {1e-7, "0.0000001"},
        {std::int64_t{INT64_MIN}, "-9223372036854775808"},
        {std::int64_t{INT64_MAX}, "9223372036854775807"},
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(writeJson(value), text);
        EXPECT_EQ(parseJson(text), value);
    }
    for (double extreme : {5e-324, -2.2250738585072014e-308, std::numeric_limits<double>::max()})
        EXPECT_EQ(parseJson(writeJson(extreme)), JsonValue(extreme));
    EXPECT_EQ(writeJson(std::numeric_limits<double>::infinity()), "null");
}

TEST(Json, IntegersAcceptAWholeFractionAndNothingElse) {
    const std::pair<const char*, std::optional<std::int64_t>> cases[] = {
        {"60", 60},   {"60.0", 60}, {"6e1", 60},
        {"60.5", {}}, {"true", {}}, {"\"60\"", {}},
        {"null", {}}, {"1e19", {}}, {"18446744073709551615", {}},
    };
    for (const auto& [text, integer] : cases)
        EXPECT_EQ(parseJson(text)->asInteger(), integer) << text;
}

TEST(Json, TextsAreEscapedAndBadUtf8IsReplaced) {
    EXPECT_EQ(writeJson("a\"\\\n\x01 é 🟢"), "\"a\\\"\\\\\\n\\u0001 é 🟢\"");
    EXPECT_EQ(writeJson("\xC3("), "\"\uFFFD(\"");
    EXPECT_EQ(*parseJson(R"("😀\/")")->asString(), "😀/");
}

TEST(Json, ARepeatedKeyKeepsTheFirstPlaceAndTheLastValue) {
    EXPECT_EQ(writeJson(*parseJson(R"({"b":1,"a":[{}],"b":{"c":null}})")), R"({"b":{"c":null},"a":[{}]})");
    EXPECT_EQ(writeJson(*parseJson(R"({"a":[1,[]],"b":{}})"), 2),
              "{\n  \"a\": [\n    1,\n    []\n  ],\n  \"b\": {}\n}");
}

TEST(Json, WhatIsNotJsonIsNothing) {
    for (const char* text : {"", "{", "[1,]", "{\"a\"}", "nul", "1 2", "1E400", "'a'", "\"\xFF\"", "[NaN]"})
        EXPECT_FALSE(parseJson(text)) << text;
    EXPECT_FALSE(parseJson(std::string(1'000'000, '[')));
}

TEST(Json, ARecordNamesTheKeyThatCannotBeRead) {
    JsonValue json = *parseJson(R"({"id":"a","count":2.5,"note":null,"flag":1})");
    KeyedDecoder record(json);
    EXPECT_EQ(record.string("id"), "a");
    EXPECT_EQ(record.number("count"), 2.5);
    EXPECT_FALSE(record.optionalString("note"));
    EXPECT_FALSE(record.optionalString("absent"));
    auto message = [](auto read) -> std::string {
        try {
            read();
            return "";
        } catch (const DecodingError& error) {
            return error.what();
        }
    };
    EXPECT_EQ(message([&] { record.string("absent"); }), "\"absent\" is missing");
    EXPECT_EQ(message([&] { record.integer("count"); }), "\"count\" is not a whole number");
    EXPECT_EQ(message([&] { record.boolean("flag"); }), "\"flag\" is not true or false");
    EXPECT_EQ(message([&] { record.optionalString("flag"); }), "\"flag\" is not a text");
    EXPECT_EQ(message([] { KeyedDecoder(JsonValue(1)); }), "the record is not an object");
}
