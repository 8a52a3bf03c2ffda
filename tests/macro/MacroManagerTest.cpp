#include "macro/MacroManager.h"

#include "store/ObjectManager.h"

#include <memory>

#include <gtest/gtest.h>

TEST(MacroManager, NewOneKnowsNothingAndOutputsUnresolvedMacros)
{
    const std::unique_ptr<CObject> object(RUNTIME_CLASS(KelMacroManager)->CreateObject());
    const auto& manager = dynamic_cast<const KelMacroManager&>(*object);
    EXPECT_EQ(manager.GetManager(), nullptr);
    EXPECT_EQ(manager.GetDrawfig(), nullptr);
    EXPECT_EQ(manager.GetCalcfig(), nullptr);
    EXPECT_EQ(manager.GetInifilePath(), L"");
    EXPECT_TRUE(manager.IsOutputUnresolvedMacro());
}

TEST(MacroManager, KeepsWhatIsSet)
{
    const CObjectManager design;
    const CDrawfig drawfig;
    const CCalcfig calcfig;
    KelMacroManager manager;
    manager.SetManager(&design);
    manager.SetDrawfig(&drawfig);
    manager.SetCalcfig(&calcfig);
    manager.SetInifilePath(L"label.ini");
    manager.SetUnresolvedMacroOutputFlg(false);
    EXPECT_EQ(manager.GetManager(), &design);
    EXPECT_EQ(manager.GetDrawfig(), &drawfig);
    EXPECT_EQ(manager.GetCalcfig(), &calcfig);
    EXPECT_EQ(manager.GetInifilePath(), L"label.ini");
    EXPECT_FALSE(manager.IsOutputUnresolvedMacro());
}
