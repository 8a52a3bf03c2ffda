#include "store/IDObject.h"

#include <gtest/gtest.h>

namespace {

CIDObject Make(long id, long order)
{
    CIDObject object;
    object.SetID(id);
    object.SetOrder(order);
    return object;
}

TEST(IDObject, IsComparedByItsOrderAlone)
{
    EXPECT_TRUE(Make(9, 1) < Make(1, 2));
    EXPECT_FALSE(Make(1, 2) < Make(9, 1));
    EXPECT_TRUE(Make(1, -1) < Make(1, 0)) << "as signed numbers";
}

TEST(IDObject, OfTwoWithTheSameOrderNeitherIsLess)
{
    EXPECT_FALSE(Make(1, 5) < Make(2, 5));
    EXPECT_FALSE(Make(2, 5) < Make(1, 5));
}

TEST(IDObject, CopiesBothFields)
{
    const CIDObject original = Make(3, 4);
    const CIDObject copy(original);
    CIDObject assigned;
    assigned = original;
    EXPECT_EQ(copy.GetID(), 3);
    EXPECT_EQ(copy.GetOrder(), 4);
    EXPECT_EQ(assigned.GetID(), 3);
    EXPECT_EQ(assigned.GetOrder(), 4);
}

} // namespace
