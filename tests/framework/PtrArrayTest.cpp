#include "framework/PtrArray.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Thing : CObject {
    explicit Thing(int number) : value(number) {}
    int value;
};

TEST(PtrArray, GivesItsElementsInTheirType)
{
    Thing first(1);
    Thing second(2);
    Thing third(3);
    CTypedPtrArray<CObArray, Thing*> things;
    things.Add(&first);
    things.Add(&third);
    things.InsertAt(1, &second);
    EXPECT_EQ(things.GetSize(), 3);
    EXPECT_EQ(things[1]->value, 2);
    things.SetAt(0, &third);
    EXPECT_EQ(things.GetAt(0), &third);
    std::vector<int> values;
    for (const Thing* thing : things)
        values.push_back(thing->value);
    EXPECT_EQ(values, (std::vector<int>{3, 2, 3}));
}

TEST(PtrArray, RefusesAnIndexOutsideIt)
{
    CTypedPtrArray<CObArray, Thing*> things;
    EXPECT_THROW((void)things[0], CInvalidArgException);
    EXPECT_THROW(things.SetAt(-1, nullptr), CInvalidArgException);
}

TEST(PtrArray, AppendsAnotherOne)
{
    Thing thing(5);
    CTypedPtrArray<CPtrArray, Thing*> things;
    CTypedPtrArray<CPtrArray, Thing*> others;
    others.Add(&thing);
    things.SetAtGrow(1, &thing);
    things.Append(others);
    EXPECT_EQ(things.GetSize(), 3);
    EXPECT_EQ(things[0], nullptr);
    EXPECT_EQ(things[2]->value, 5);
}

} // namespace
