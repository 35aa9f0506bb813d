#include <Values/ImageBytes.h>

#include <gtest/gtest.h>

namespace platform {
namespace {

using namespace std::string_literals;

TEST(ImageBytes, TheHeadSaysFormatAndSize) {
    const std::tuple<std::string, ImageBytes::Format, std::optional<ImageBytes::PixelSize>> cases[] = {
        {"\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\1\0\0\0\0\2"s, ImageBytes::Format::png,
         ImageBytes::PixelSize{256, 2}},
        {"\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0"s, ImageBytes::Format::png, std::nullopt},
        {"GIF89a\4\0\2\1"s, ImageBytes::Format::gif, ImageBytes::PixelSize{4, 258}},
        {"\xFF\xD8\xFF\xE0\0\4ab\xFF\xFF\xC2\0\x0B\b\0\2\1\4\3"s, ImageBytes::Format::jpeg,
         ImageBytes::PixelSize{260, 2}},
        {"\xFF\xD8\xFF\xE0\0\0\xFF\xE0\0\0"s, ImageBytes::Format::jpeg, std::nullopt},
        {"\xFF\xD8\xFF\xC4\0\x0B\b\0\2\1\4\3"s, ImageBytes::Format::jpeg, std::nullopt},
        {"RIFF\4\0\0\0WEBPVP8 "s, ImageBytes::Format::webp, std::nullopt},
    };
    for (const auto& [bytes, format, size] : cases) {
        const auto image = ImageBytes::recognize(bytes);
        ASSERT_TRUE(image);
        EXPECT_EQ(image->format(), format);
        EXPECT_EQ(image->pixelSize(), size) << testing::PrintToString(bytes);
    }
    for (const auto& bytes : {""s, "\x89PN"s, "<svg/>"s, "RIFF\4\0\0\0WAVE"s})
        EXPECT_FALSE(ImageBytes::recognize(bytes));
}

TEST(ImageBytes, PicturesThatAreDearToDecodeAreKnownByTheirHead) {
    const auto word = [](unsigned number) {
        return std::string{static_cast<char>(number >> 8U), static_cast<char>(number & 0xFFU)};
    };
    const auto png = [&](unsigned width, unsigned height) {
        return "\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0"s + word(width) + "\0\0"s + word(height);
    };
    const auto jpeg = [&](unsigned width, unsigned height, int scans) {
        // With a thumbnail in its head, as cameras write it.
        auto bytes = "\xFF\xD8\xFF\xE1\0\6\xFF\xDA\xFF\xDA\xFF\xC2\0\x0B\b"s + word(height) + word(width);
        for (int i = 0; i < scans; ++i)
            bytes += "\xFF\xDA\0\2"s;
        return bytes;
    };
    const std::vector<std::pair<std::string, bool>> cases = {
        {png(4000, 4000), false},          {png(4000, 4001), true},         {jpeg(10'000, 5000, 1), false},
        {jpeg(10'000, 5001, 1), true},     {jpeg(4000, 4000, 12), false},   {jpeg(4000, 4001, 2), true},
        {jpeg(4000, 4000, 13), true},      {jpeg(100, 100, 20'000), false}, {jpeg(100, 100, 20'001), true},
        {"GIF89a\xFF\xFF\xFF\xFF"s, true},
    };
    for (const auto& [bytes, isCostly] : cases)
        EXPECT_EQ(ImageBytes::recognize(bytes)->isCostly(), isCostly)
            << testing::PrintToString(bytes.substr(0, 40)) << bytes.size();
}

}  // namespace
}  // namespace platform
