// Default attribute entries and the two functions over lists of them.

#include "objects/ObDefault.h"

#include <gmock/gmock.h>

namespace {

TEST(ObDefault, ADefaultConstructedEntryIsOfNoType)
{
    const CObDefault entry;
    EXPECT_EQ(entry.GetType(), -1);
    EXPECT_EQ(entry.GetObjName(), L"");
    EXPECT_TRUE(entry.GetSubattribute().IsEmpty());
    EXPECT_EQ(CObDefault(objectdata::Span).GetType(), objectdata::Span);
}

TEST(ObDefault, IsForExactlyItsTag)
{
    const CObDefault entry(objectdata::Span, L"span");
    EXPECT_TRUE(entry.Is(L"span"));
    EXPECT_FALSE(entry.Is(L"Span"));
    EXPECT_FALSE(entry.Is(L"spans"));
    EXPECT_FALSE(entry.Is(L""));
}

TEST(ObDefault, CopyingAListAppendsEntriesOfItsOwn)
{
    CTypedPtrList<CObList, CObDefault*> from;
    CTypedPtrList<CObList, CObDefault*> to;
    from.AddTail(new CObDefault(objectdata::Span, L"span"));
    from.GetHead()->GetSubattribute().SetAt(L"k", L"v");
    to.AddTail(new CObDefault(objectdata::Node, L"node"));
    CopyCObDefaultPtrList(from, to);
    from.GetHead()->GetSubattribute().SetAt(L"k", L"changed");

    ASSERT_EQ(to.GetCount(), 2);
    EXPECT_EQ(to.GetHead()->GetObjName(), L"node");
    EXPECT_EQ(to.GetTail()->GetObjName(), L"span");
    EXPECT_EQ(to.GetTail()->GetType(), objectdata::Span);
    CString value;
    EXPECT_TRUE(to.GetTail()->GetSubattribute().Lookup(L"k", value));
    EXPECT_EQ(value, L"v");

    ClearCObDefaultPtrList(from);
    ClearCObDefaultPtrList(to);
    EXPECT_TRUE(from.IsEmpty());
    EXPECT_TRUE(to.IsEmpty());
    ClearCObDefaultPtrList(to);
}

} // namespace
