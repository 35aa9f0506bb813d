#include <CalendarFiles/TextDecoding.h>
#include <Values/Base64.h>

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(TextDecoding, Base64IsReadWholeOrNotAtAll) {
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"aGVsbG8gd29ybGQ=", "hello world"},
        {"aGVs\r\n bG8", "hello"},
        {"AP+/", std::string("\0\xff\xbf", 3)},
        {"", ""},
        {"aGVsbG8*", std::nullopt},
        {"aGVsbG8=aGVs", std::nullopt},
        {"aGVsb", std::nullopt},
        {"aGV===", std::nullopt},
    };
    for (const auto& [text, bytes] : cases)
        EXPECT_EQ(decodedBase64(text), bytes) << text;
}

TEST(TextDecoding, WhatIsNotAnEscapeInQuotedPrintableStays) {
    EXPECT_EQ(decodedQuotedPrintable("M=C3=BCller =3d 1=0A2"), "Müller = 1\n2");
    EXPECT_EQ(decodedQuotedPrintable("a=XYb=C"), "a=XYb=C");
}

TEST(TextDecoding, NamedCharacterSetsBecomeUtf8) {
    EXPECT_EQ(utf8FromCharset("\xB1", "ISO-8859-2"), "ą");
    EXPECT_EQ(utf8FromCharset("\xF0\xD2\xC9", "koi8-r"), "При");
    EXPECT_EQ(utf8FromCharset("\x8E\x52\x93\x63", "Shift_JIS"), "山田");
    // Said to be Latin-1, written as Windows-1252 or UTF-8.
    EXPECT_EQ(utf8FromCharset("\x80 5", "iso-8859-1"), "€ 5");
    EXPECT_EQ(utf8FromCharset("é", "ISO-8859-1"), "é");
    EXPECT_FALSE(utf8FromCharset("x", "no-such-charset"));
}

}  // namespace
}  // namespace platform
