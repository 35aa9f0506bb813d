#include <Values/PropertyList.h>

#include <gtest/gtest.h>

#include <clocale>

using namespace platform;

namespace {

std::optional<PropertyValue> read(std::string_view text) {
    return readPropertyList({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

std::optional<PropertyValue> readBody(std::string_view body) {
    return read("<?xml version=\"1.0\"?>\n<plist version=\"1.0\">" + std::string(body) + "</plist>");
}

}  // namespace

TEST(PropertyList, WhatIsWrittenReadsBackTheSame) {
    PropertyDictionary inner;
    inner.set("z", -7);
    inner.set("a", std::int64_t{INT64_MIN});
    PropertyDictionary root;
    root.set("largest", std::int64_t{INT64_MAX});
    root.set("flags", PropertyArray{true, false});
    root.set("reals", PropertyArray{0.1, 1.0, 5e-324, 1.7976931348623157e308, -0.0});
    root.set("text", "<&>\"' é 🟢\r\n\ttab ");
    root.set("data", PropertyArray{Data{}, Data{0}, Data{0, 255}, Data{1, 2, 3}, Data{9, 8, 7, 6}});
    root.set("", PropertyArray{});
    root.set("<key>", inner);
    auto back = read(writeXmlPropertyList(root));
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, PropertyValue(root));
    EXPECT_EQ(back->asDictionary()->begin()->first, "largest");
}

TEST(PropertyList, TextsThatXmlCannotHoldStayReadable) {
    auto back = read(writeXmlPropertyList(PropertyArray{std::string("a\0b", 3), "\x01", "bad \xFF utf"}));
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, PropertyValue(PropertyArray{"a\uFFFDb", "\uFFFD", "bad \uFFFD utf"}));
}

TEST(PropertyList, ReadsWhatOtherProgramsWrite) {
    EXPECT_EQ(readBody("<integer> 12 </integer>"), PropertyValue(12));
    EXPECT_EQ(readBody("<integer>18446744073709551615</integer>"), PropertyValue(18446744073709551615.0));
    EXPECT_EQ(readBody("<real>1e3</real>"), PropertyValue(1000.0));
    EXPECT_EQ(readBody("<date>2001-01-01T00:01:00Z</date>"), PropertyValue(60.0));
    EXPECT_EQ(readBody("<data>\n AQ\n ID\n</data>"), PropertyValue(Data{1, 2, 3}));
    EXPECT_EQ(readBody("<!-- a --><string><![CDATA[<b>]]></string>"), PropertyValue("<b>"));
    EXPECT_EQ(readBody("<string/>"), PropertyValue(""));
}

TEST(PropertyList, DamagedListsAreUnreadableNeverGarbage) {
    const char* bodies[] = {
        "<integer>xyz</integer>",
        "<integer>12x</integer>",
        "<integer></integer>",
        "<real>1,5</real>",
        "<data>!</data>",
        "<data>A</data>",
        "<date>today</date>",
        "<dict><key>a</key></dict>",
        "<dict><string>a</string></dict>",
        "<dict><key>a</key><key>b</key></dict>",
        "<array><key>a</key></array>",
        "<array><unknown/></array>",
        "<string>a<string>b</string></string>",
        "<array>text</array>",
        "<true>no</true>",
        "<string>&unknown;</string>",
        "<string>a",
        "<string>1</string><string>2</string>",
        "",
    };
    for (const char* body : bodies)
        EXPECT_FALSE(readBody(body)) << body;
    for (const char* text : {"", "garbage", "<dict/>", "bplist00", "bplist00\x01\x02\x03", "\xFF\xFE<"})
        EXPECT_FALSE(read(text)) << text;
    std::string deep;
    for (int i = 0; i < 100'000; ++i)
        deep += "<array>";
    EXPECT_FALSE(readBody(deep));
}

TEST(PropertyList, ReadsTheBinaryForm) {
    // {"a": -2, "b": [true, 0.5]}, made by hand after the format's description.
    constexpr unsigned char bytes[] = {
        'b',  'p',  'l',  'i',  's',  't',  '0',  '0',                              //
        0xD2, 0x01, 0x02, 0x03, 0x04,                                               // 8: dictionary
        0x51, 'a',                                                                  // 13
        0x51, 'b',                                                                  // 15
        0x13, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE,                       // 17: -2
        0xA2, 0x05, 0x06,                                                           // 26: array
        0x09,                                                                       // 29: true
        0x23, 0x3F, 0xE0, 0,    0,    0,    0,    0,    0,                          // 30: 0.5
        8,    13,   15,   17,   26,   29,   30,                                     // offsets
        0,    0,    0,    0,    0,    0,    1,    1,    0,    0, 0, 0, 0, 0, 0, 7,  //
        0,    0,    0,    0,    0,    0,    0,    0,    0,    0, 0, 0, 0, 0, 0, 39};
    auto root = readPropertyList(bytes);
    ASSERT_TRUE(root);
    PropertyDictionary expected;
    expected.set("a", -2);
    expected.set("b", PropertyArray{true, 0.5});
    EXPECT_EQ(*root, PropertyValue(expected));
    EXPECT_FALSE(readPropertyList(std::span(bytes).first(sizeof bytes - 8)));
}
