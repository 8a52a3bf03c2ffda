// Items as values, their tokens and descriptions, and the objects that they speak of.
#include "macro/MacroItem.h"

#include "macro/LabelledObjects.h"
#include "resources/Resources.h"

#include <memory>

#include <gtest/gtest.h>

namespace {

using macros::LabelledNetwork;

KelMacroItem filled()
{
    KelMacroItem item(KelMacroItem::MACROTYPE_TEXT, KelMacroItem::DATATYPE_BOOL);
    item.SetObjectType(objectdata::Span);
    item.SetObjectId(17);
    item.SetObjectName(L"Span");
    item.SetAttrib(L"splen");
    item.SetMacro(L"[M:SPLEN]");
    item.SetDesc(L"Length");
    item.SetDefaultValue(L"default");
    item.SetValue(L"12.50");
    item.SetRoundFig(2);
    item.SetRoundMode(1);
    item.SetINTPTRParam(-5);
    item.SetStrParam(L"x");
    return item;
}

void expectFilled(const KelMacroItem& item)
{
    EXPECT_EQ(item.GetMacroType(), KelMacroItem::MACROTYPE_TEXT);
    EXPECT_EQ(item.GetDataType(), KelMacroItem::DATATYPE_BOOL);
    EXPECT_EQ(item.GetObjectType(), objectdata::Span);
    EXPECT_EQ(item.GetObjectId(), 17u);
    EXPECT_EQ(item.GetObjectName(), L"Span");
    EXPECT_EQ(item.GetAttrib(), L"splen");
    EXPECT_EQ(item.GetMacro(), L"[M:SPLEN]");
    EXPECT_EQ(item.GetDesc(), L"Length");
    EXPECT_EQ(item.GetDefaultValue(), L"default");
    EXPECT_EQ(item.GetValue(), L"12.50");
    EXPECT_EQ(item.GetRoundFig(), 2);
    EXPECT_EQ(item.GetRoundMode(), 1);
    EXPECT_EQ(item.GetINTPTRParam(), -5);
    EXPECT_EQ(item.GetStrParam(), L"x");
}

void expectNew(const KelMacroItem& item)
{
    EXPECT_EQ(item.GetMacroType(), KelMacroItem::MACROTYPE_MACRO);
    EXPECT_EQ(item.GetDataType(), KelMacroItem::DATATYPE_CHAR);
    EXPECT_EQ(item.GetObjectType(), -1);
    EXPECT_EQ(item.GetObjectId(), 0u);
    for (const CString& text : {item.GetObjectName(), item.GetAttrib(), item.GetMacro(), item.GetDesc(),
                                item.GetDefaultValue(), item.GetValue(), item.GetStrParam()})
        EXPECT_EQ(text, L"");
    EXPECT_EQ(item.GetRoundFig(), 4);
    EXPECT_EQ(item.GetRoundMode(), 0);
    EXPECT_EQ(item.GetINTPTRParam(), 0);
}

// An application that uses the library's numbers for texts of its own.
class ApplicationTexts final : public obmgr::ResourceSource {
public:
    const wchar_t* Find(unsigned) const override { return L"application's own"; }
};

} // namespace

TEST(MacroItem, NewItemIsAnEmptyTextMacro)
{
    expectNew(KelMacroItem());
    expectNew(KelMacroItem(KelMacroItem::MACROTYPE_MACRO, KelMacroItem::DATATYPE_CHAR));
    const std::unique_ptr<CObject> object(RUNTIME_CLASS(KelMacroItem)->CreateObject());
    expectNew(dynamic_cast<KelMacroItem&>(*object));
}

TEST(MacroItem, KeepsWhatIsSet)
{
    expectFilled(filled());
}

TEST(MacroItem, CopiesHaveAllFields)
{
    const KelMacroItem source = filled();
    expectFilled(KelMacroItem(source));
    KelMacroItem copied;
    copied.Copy(source);
    expectFilled(copied);
    KelMacroItem assigned;
    assigned = source;
    expectFilled(assigned);
}

TEST(MacroItem, CopyOfItselfKeepsAllFields)
{
    KelMacroItem item = filled();
    item.Copy(item);
    expectFilled(item);
}

TEST(MacroItem, CopyStandsAlone)
{
    KelMacroItem source = filled();
    const KelMacroItem copy(source);
    source.Initislize();
    expectFilled(copy);
}

TEST(MacroItem, InitializingMakesItNew)
{
    KelMacroItem item = filled();
    item.Initislize();
    expectNew(item);
}

TEST(MacroItem, SetFillsEveryFieldWithTheModeBeforeTheDigits)
{
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
    KelMacroItem item;
    item.Set(KelMacroItem::MACROTYPE_TEXT, KelMacroItem::DATATYPE_BOOL, objectdata::Span, L"Span", L"splen",
             L"[M:SPLEN]", IDS_YES, 17, 1, 2, L"default", L"12.50", -5, L"x");
    EXPECT_EQ(item.GetDesc(), L"Yes");
    item.SetDesc(L"Length");
    expectFilled(item);
}

TEST(MacroItem, MacroTypeTellsMacrosAndAttributesFromText)
{
    KelMacroItem item;
    EXPECT_TRUE(item.IsMacro() && !item.IsAttrib());
    item.SetMacroType(KelMacroItem::MACROTYPE_ATTRIB);
    EXPECT_TRUE(!item.IsMacro() && item.IsAttrib());
    item.SetMacroType(KelMacroItem::MACROTYPE_TEXT);
    EXPECT_TRUE(!item.IsMacro() && !item.IsAttrib());
}

TEST(MacroItem, SettersOfTheTypesAreReadBack)
{
    KelMacroItem item;
    item.SetDataType(KelMacroItem::DATATYPE_DOUBLE);
    item.SetMacroType(KelMacroItem::MACROTYPE_ATTRIB);
    EXPECT_EQ(item.GetDataType(), 1);
    EXPECT_EQ(item.GetMacroType(), 1);
    EXPECT_EQ(KelMacroItem::MACROTYPE_MACRO, 0);
    EXPECT_EQ(KelMacroItem::MACROTYPE_TEXT, 2);
    EXPECT_EQ(KelMacroItem::DATATYPE_INT, 0);
    EXPECT_EQ(KelMacroItem::DATATYPE_CHAR, 2);
    EXPECT_EQ(KelMacroItem::DATATYPE_BOOL, 3);
}

TEST(MacroItem, IdsHave32BitsAndTheParameterThoseOfAPointer)
{
    KelMacroItem item;
    item.SetObjectId(0x1'0000'0002UL);
    EXPECT_EQ(item.GetObjectId(), 2u);
    item.SetObjectId(static_cast<unsigned long>(-1));
    EXPECT_EQ(item.GetObjectId(), 0xFFFFFFFFu);
    const auto pointer = reinterpret_cast<std::intptr_t>(&item);
    item.SetINTPTRParam(pointer);
    EXPECT_EQ(item.GetINTPTRParam(), pointer);
}

TEST(MacroItem, TokenOfAnAttributeIsItsKeyInUpperCase)
{
    EXPECT_EQ(KelMacroItem::GetMacroFromAttrib(L"webname"), L"[M:WEBNAME]");
    EXPECT_EQ(KelMacroItem::GetMacroFromAttrib(L"Sp%s1"), L"[M:SP%S1]");
}

TEST(MacroItem, TokenOfAnEmptyAttributeIsTheBareBrackets)
{
    EXPECT_EQ(KelMacroItem::GetMacroFromAttrib(L""), L"[M:]");
}

TEST(MacroItem, DescriptionIsInTheActiveLanguage)
{
    KelMacroItem item;
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
    EXPECT_EQ(KelMacroItem::GetDescFromRes(101), L"Yes");
    EXPECT_EQ(KelMacroItem::GetDescFromRes(102), L"No");
    item.SetDesc(IDS_YES);
    EXPECT_EQ(item.GetDesc(), L"Yes");
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::Japanese));
    EXPECT_EQ(KelMacroItem::GetDescFromRes(IDS_NO), L"いいえ");
    item.SetDesc(IDS_YES);
    EXPECT_EQ(item.GetDesc(), L"はい");
}

TEST(MacroItem, DescriptionOfAnUnknownNumberIsEmpty)
{
    EXPECT_EQ(KelMacroItem::GetDescFromRes(0), L"");
    EXPECT_EQ(KelMacroItem::GetDescFromRes(0xFFFFFFFF), L"");
    KelMacroItem item = filled();
    item.SetDesc(0u);
    EXPECT_EQ(item.GetDesc(), L"");
}

TEST(MacroItem, DescriptionIsTheLibrarysAndLeavesTheApplicationsTextsCurrent)
{
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
    ApplicationTexts application;
    const obmgr::ResourceHandle before = AfxGetResourceHandle();
    AfxSetResourceHandle(&application);
    const CString desc = KelMacroItem::GetDescFromRes(IDS_YES);
    const obmgr::ResourceHandle after = AfxGetResourceHandle();
    AfxSetResourceHandle(before);
    EXPECT_EQ(desc, L"Yes");
    EXPECT_EQ(after, &application);
}

TEST(MacroItem, FindsTheLiveObjectOfItsFamily)
{
    LabelledNetwork net;
    for (const objectdata::OBJECTTYPE type : macros::kLabelledTypes) {
        KelMacroItem item;
        item.SetObjectType(type);
        item.SetObjectId(net.IdOf(type));
        CPipeObject* const live = net.manager.TableOf(type).Find(static_cast<long>(item.GetObjectId()));
        ASSERT_NE(live, nullptr) << type;
        EXPECT_EQ(item.GetPipeObject(&net.manager), live) << type;
        item.SetObjectId(macros::kUnknownId);
        EXPECT_EQ(item.GetPipeObject(&net.manager), nullptr) << type;
    }
}

TEST(MacroItem, SectionItemFindsTheSpan)
{
    LabelledNetwork net;
    KelMacroItem item;
    item.SetObjectType(objectdata::Section);
    item.SetObjectId(net.IdOf(objectdata::Span));
    EXPECT_EQ(item.GetPipeObject(&net.manager), &net.Span("a-b"));
    item.SetObjectId(net.IdOf(objectdata::Section));
    EXPECT_EQ(item.GetPipeObject(&net.manager), nullptr);
}

TEST(MacroItem, ItemsOfOtherFamiliesHaveNoObject)
{
    LabelledNetwork net;
    for (const auto type :
         {objectdata::Project, objectdata::Drawformdat, objectdata::Profilelayout, objectdata::ManHole}) {
        KelMacroItem item;
        item.SetObjectType(type);
        item.SetObjectId(net.IdOf(type));
        EXPECT_EQ(item.GetPipeObject(&net.manager), nullptr) << type;
    }
    for (const int type : {-1, -2, static_cast<int>(objectdata::kTypeCount), 12345}) {
        KelMacroItem item;
        item.SetObjectType(static_cast<objectdata::OBJECTTYPE>(type));
        item.SetObjectId(net.IdOf(objectdata::Span));
        EXPECT_EQ(item.GetPipeObject(&net.manager), nullptr) << type;
    }
}

TEST(MacroItem, WithoutIdOrManagerThereIsNoObject)
{
    LabelledNetwork net;
    KelMacroItem item;
    item.SetObjectType(objectdata::Span);
    EXPECT_EQ(item.GetPipeObject(&net.manager), nullptr);
    item.SetObjectId(net.IdOf(objectdata::Span));
    EXPECT_EQ(item.GetPipeObject(nullptr), nullptr);
}

TEST(MacroItem, ObjectIsLookedUpAtEachUse)
{
    LabelledNetwork net;
    KelMacroItem item;
    item.SetObjectType(objectdata::Lateral);
    item.SetObjectId(net.IdOf(objectdata::Lateral));
    EXPECT_NE(item.GetPipeObject(&net.manager), nullptr);
    net.manager.DeleteLateralObject(static_cast<long>(item.GetObjectId()));
    EXPECT_EQ(item.GetPipeObject(&net.manager), nullptr);
}

TEST(MacroItem, ArraysHoldItemsByValue)
{
    obmgr::MacroItems items;
    items.Add(filled());
    items.SetSize(2);
    expectFilled(items[0]);
    expectNew(items[1]);
    items[0].Initislize();
    expectNew(items[0]);
    EXPECT_THROW(items[2], CInvalidArgException);
    EXPECT_THROW(items[-1], CInvalidArgException);
}
