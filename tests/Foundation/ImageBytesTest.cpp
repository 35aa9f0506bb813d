#include <Foundation/ImageBytes.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace platform {
namespace {

using namespace std::string_literals;

TEST(ImageBytes, TheHeadTellsFormatAndSize) {
    struct Case {
        std::string bytes;
        ImageBytes::Format format;
        std::optional<ImageBytes::PixelSize> size;
    };
    const std::vector<Case> cases = {
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

}  // namespace
}  // namespace platform
