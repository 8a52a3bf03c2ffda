#include "common/Id32.h"

#include <climits>

#include <gtest/gtest.h>

using obmgr::AddIds;
using obmgr::Id32;

TEST(Id32, WrapsAtThirtyTwoBits)
{
    EXPECT_EQ(Id32(5L), 5);
    EXPECT_EQ(Id32(-5L), -5);
    EXPECT_EQ(Id32(4294967295UL), -1);
    EXPECT_EQ(Id32(2147483648L), INT_MIN);
    EXPECT_EQ(Id32(4294967296L), 0);
    EXPECT_EQ(Id32(LONG_MIN), 0);
}

TEST(Id32, SumsWrapWithoutOverflow)
{
    EXPECT_EQ(AddIds(1, 2), 3);
    EXPECT_EQ(AddIds(INT_MAX, 1), INT_MIN);
    EXPECT_EQ(AddIds(INT_MIN, -1), INT_MAX);
    EXPECT_EQ(AddIds(LONG_MAX, LONG_MAX), -2);
}

TEST(Id32, IdsOfTexts)
{
    EXPECT_EQ(obmgr::IdFromText(L"12"), 12);
    EXPECT_EQ(obmgr::IdFromText(std::string_view("-12x")), -12);
    EXPECT_EQ(obmgr::IdFromText(L"99999999999"), INT_MAX);
    EXPECT_EQ(obmgr::IdFromText(CString(L"7")), 7);
    EXPECT_EQ(obmgr::IdFromText(std::wstring_view(L"78", 1)), 7);
}
