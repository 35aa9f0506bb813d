#include <HbrUtils/Prefixes.h>

#include <gtest/gtest.h>

namespace {

using namespace hbr;

TEST(Prefixes, OnlyTheFrontGoesAndOnlyOnce) {
    EXPECT_EQ(deletingPrefix("mailto:mailto:a", "mailto:"), "mailto:a");
    EXPECT_EQ(deletingPrefix("Mailto:a", "mailto:"), "Mailto:a");
    EXPECT_EQ(deletingPrefix("e\u0301a", "e"), "e\u0301a");
    EXPECT_EQ(deletingPrefix("e\u0301a", "\u00E9"), "a");
    EXPECT_EQ(deletingPrefix("👩‍👧x", "👩"), "👩‍👧x");
    EXPECT_EQ(deletingPrefix("a", "ab"), "a");
    EXPECT_EQ(deletingPrefix("a", ""), "a");
}

}  // namespace
