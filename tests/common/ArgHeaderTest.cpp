#include "common/ArgHeader.h"

#include <gtest/gtest.h>

namespace {

class CountedArgument : public KelArgHeader {
public:
    explicit CountedArgument(int& living) : m_living(living) { ++m_living; }
    ~CountedArgument() override { --m_living; }

    void Copy(const KelArgHeader* source) override
    {
        KelArgHeader::Copy(source);
        if (const auto* const other = dynamic_cast<const CountedArgument*>(source)) m_number = other->m_number;
    }

    int m_number = 0;

private:
    int& m_living;
};

} // namespace

TEST(ArgHeader, IsAnObjectOfItsOwnClass)
{
    const KelArgHeader header;
    EXPECT_TRUE(header.IsKindOf(RUNTIME_CLASS(KelArgHeader)));
    EXPECT_EQ(RUNTIME_CLASS(KelArgHeader)->m_pBaseClass, RUNTIME_CLASS(CObject));
}

TEST(ArgHeader, CopyTakesAnySourceAndNone)
{
    int living = 0;
    CountedArgument argument(living);
    argument.m_number = 7;
    KelArgHeader header;
    header.Copy(&argument);
    argument.Copy(&header);
    argument.Copy(nullptr);
    EXPECT_EQ(argument.m_number, 7);
}

TEST(ArgHeader, CopyThroughTheBaseIsThatOfTheClass)
{
    int living = 0;
    CountedArgument source(living);
    CountedArgument target(living);
    source.m_number = 7;
    KelArgHeader& base = target;
    base.Copy(&source);
    EXPECT_EQ(target.m_number, 7);
}

TEST(ArgHeader, IsDestroyedThroughTheBase)
{
    int living = 0;
    const KelArgHeader* const header = new CountedArgument(living);
    EXPECT_EQ(living, 1);
    delete header;
    EXPECT_EQ(living, 0);
}
