#include "common/TagValue.h"

#include <gtest/gtest.h>

TEST(TagValue, SortsByValueAndKeepsTheOrderOfEquals)
{
    CTagValueIntArray entries;
    int extra = 0;
    entries.Add(CTagValueInt(L"c", 2, &extra));
    entries.Add(CTagValueInt(L"a", 1));
    entries.Add(CTagValueInt(L"d", 2));
    entries.Add(CTagValueInt(L"b", -5));
    entries.Add(CTagValueInt(L"e", 1));
    SortCTagValueIntArray(entries);
    CString tags;
    for (const CTagValueInt& entry : entries)
        tags += entry.m_strTag;
    EXPECT_EQ(tags, L"baecd");
    EXPECT_EQ(entries[3].m_pExtra, &extra);
}

TEST(TagValue, ComparesByValueAlone)
{
    EXPECT_LT(CTagValueInt(L"z", INT_MIN).Compare(CTagValueInt(L"a", INT_MAX)), 0);
    EXPECT_EQ(CTagValueInt(L"z", 1).Compare(CTagValueInt(1)), 0);
    EXPECT_GT(CTagValueInt(2).Compare(CTagValueInt()), 0);
}

TEST(TagValue, EmptyArrayIsSorted)
{
    CTagValueIntArray entries;
    SortCTagValueIntArray(entries);
    EXPECT_TRUE(entries.IsEmpty());
}
