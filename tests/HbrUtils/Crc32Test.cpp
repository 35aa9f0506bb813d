#include <HbrUtils/Crc32.h>

#include <gtest/gtest.h>

namespace {

using namespace hbr;

TEST(Crc32, IsTheStandardOne) {
    EXPECT_EQ(crc32("123456789"), 0xCBF43926U);
    EXPECT_EQ(crc32(""), 0U);
}

}  // namespace
