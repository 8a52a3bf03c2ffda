#include "framework/Object.h"

#include <cstring>
#include <memory>

#include <gtest/gtest.h>

namespace {

class Plain : public CObject {
    DECLARE_DYNAMIC(Plain)
};

class Made : public Plain {
    DECLARE_DYNCREATE(Made)
    int m_number = 7;
};

IMPLEMENT_DYNAMIC(Plain, CObject)
IMPLEMENT_DYNCREATE(Made, Plain)

} // namespace

TEST(Object, ClassKnowsItsNameAndBases)
{
    const Made made;
    EXPECT_STREQ(made.GetRuntimeClass()->m_lpszClassName, "Made");
    EXPECT_EQ(made.GetRuntimeClass(), RUNTIME_CLASS(Made));
    EXPECT_EQ(Made::GetThisClass(), RUNTIME_CLASS(Made));
    EXPECT_EQ(RUNTIME_CLASS(Made)->m_pBaseClass, RUNTIME_CLASS(Plain));
    EXPECT_TRUE(made.IsKindOf(RUNTIME_CLASS(Made)));
    EXPECT_TRUE(made.IsKindOf(RUNTIME_CLASS(Plain)));
    EXPECT_TRUE(made.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(made.IsKindOf(RUNTIME_CLASS(CDocument)));
    EXPECT_FALSE(Plain().IsKindOf(RUNTIME_CLASS(Made)));
    EXPECT_TRUE(RUNTIME_CLASS(Made)->IsDerivedFrom(RUNTIME_CLASS(CObject)));
}

TEST(Object, IsMadeFromItsClass)
{
    const std::unique_ptr<CObject> object(RUNTIME_CLASS(Made)->CreateObject());
    ASSERT_TRUE(object);
    EXPECT_EQ(dynamic_cast<Made&>(*object).m_number, 7);
    const std::unique_ptr<CObject> direct(Made::CreateObject());
    EXPECT_TRUE(direct->IsKindOf(RUNTIME_CLASS(Made)));
    EXPECT_EQ(RUNTIME_CLASS(Plain)->CreateObject(), nullptr);
    const std::unique_ptr<CObject> document(RUNTIME_CLASS(CDocument)->CreateObject());
    EXPECT_TRUE(document->IsKindOf(RUNTIME_CLASS(CDocument)));
}

TEST(Object, DerivedClassesMayBeCopied)
{
    Made made;
    made.m_number = 9;
    const Made copy(made);
    EXPECT_EQ(copy.m_number, 9);
}
