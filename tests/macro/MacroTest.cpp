// The base of the resolvers: which operation an item goes to, and what the operations of the base show.
#include "macro/Macro.h"

#include "macro/MacroArguments.h"
#include "macro/MacroManager.h"
#include "resources/Resources.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace {

// The base as it is, with its protected operations open.
class BaseMacro : public KelMacro {
public:
    using KelMacro::KelMacro;
    using KelMacro::ResolveBoolAttribValue;
    using KelMacro::ResolveCharAttribValue;
    using KelMacro::ResolveDoubleAttribValue;
    using KelMacro::ResolveIntAttribValue;
    using KelMacro::ResolveMacroValue;

    KelMacro* Clone() const override { return new BaseMacro(*this); }
};

// Notes which operation was called, with what, and answers as told.
class NotingMacro : public KelMacro {
public:
    KelMacro* Clone() const override { return new NotingMacro(*this); }

    bool answer = true;
    mutable std::string called;
    mutable const void* argument = nullptr;
    mutable const void* manager = nullptr;
    mutable const void* object = nullptr;

protected:
    bool ResolveMacroValue(const KelMacroArgPipeObject* a, const KelMacroManager* m, const CPipeObject* o,
                           KelMacroItem&) const override
    {
        return Note("macro", a, m, o);
    }
    bool ResolveIntAttribValue(const KelMacroArgPipeObject* a, const KelMacroManager* m, const CPipeObject* o,
                               KelMacroItem&) const override
    {
        return Note("int", a, m, o);
    }
    bool ResolveDoubleAttribValue(const KelMacroArgPipeObject* a, const KelMacroManager* m, const CPipeObject* o,
                                  KelMacroItem&) const override
    {
        return Note("double", a, m, o);
    }
    bool ResolveCharAttribValue(const KelMacroArgPipeObject* a, const KelMacroManager* m, const CPipeObject* o,
                                KelMacroItem&) const override
    {
        return Note("char", a, m, o);
    }
    bool ResolveBoolAttribValue(const KelMacroArgPipeObject* a, const KelMacroManager* m, const CPipeObject* o,
                                KelMacroItem&) const override
    {
        return Note("bool", a, m, o);
    }

private:
    bool Note(const char* name, const KelMacroArgPipeObject* a, const KelMacroManager* m, const CPipeObject* o) const
    {
        called += name;
        argument = a;
        manager = m;
        object = o;
        return answer;
    }
};

// A resolver, an item "[M:KEY]" that shows the attribute "key", and an object.
class Macro : public testing::Test {
protected:
    Macro()
    {
        m_item.SetMacro(L"[M:KEY]");
        m_item.SetAttrib(L"key");
        m_item.SetValue(L"before");
    }
    CString Shown(KelMacroItem::DATATYPE dataType, const wchar_t* stored)
    {
        m_object.WriteSubAttribute(L"key", stored);
        return Shown(dataType);
    }
    // The value after a resolve that has to succeed.
    CString Shown(KelMacroItem::DATATYPE dataType)
    {
        m_item.SetDataType(dataType);
        EXPECT_TRUE(m_macro.ResolveMacro(&m_argument, &m_manager, &m_object, m_item));
        return m_item.GetValue();
    }
    CString Number(const wchar_t* stored, int digits, int mode)
    {
        m_item.SetRoundFig(digits);
        m_item.SetRoundMode(mode);
        return Shown(KelMacroItem::DATATYPE_DOUBLE, stored);
    }

    BaseMacro m_macro{objectdata::Span};
    KelMacroArgPipeObject m_argument;
    KelMacroManager m_manager;
    CPipeObject m_object;
    KelMacroItem m_item;
};

constexpr KelMacroItem::DATATYPE kDataTypes[] = {KelMacroItem::DATATYPE_INT, KelMacroItem::DATATYPE_DOUBLE,
                                                 KelMacroItem::DATATYPE_CHAR, KelMacroItem::DATATYPE_BOOL};

} // namespace

// ---- which operation an item goes to ----

TEST_F(Macro, ItemWithAnAttributeIsDispatchedByItsDataTypeWhateverItsMacroType)
{
    const char* const operations[] = {"int", "double", "char", "bool"};
    for (const auto macroType :
         {KelMacroItem::MACROTYPE_MACRO, KelMacroItem::MACROTYPE_ATTRIB, KelMacroItem::MACROTYPE_TEXT})
        for (const auto dataType : kDataTypes) {
            const NotingMacro macro;
            m_item.SetMacroType(macroType);
            m_item.SetDataType(dataType);
            EXPECT_TRUE(macro.ResolveMacro(&m_argument, &m_manager, &m_object, m_item));
            EXPECT_EQ(macro.called, operations[dataType]) << macroType;
        }
}

TEST_F(Macro, UnknownDataTypeIsShownAsText)
{
    const NotingMacro macro;
    m_item.SetDataType(static_cast<KelMacroItem::DATATYPE>(99));
    EXPECT_TRUE(macro.ResolveMacro(&m_argument, &m_manager, &m_object, m_item));
    EXPECT_EQ(macro.called, "char");
}

TEST_F(Macro, MacroWithoutAnAttributeIsResolvedAsAMacroWhateverItsDataType)
{
    m_item.SetAttrib(L"");
    for (const auto dataType : kDataTypes) {
        const NotingMacro macro;
        m_item.SetDataType(dataType);
        EXPECT_TRUE(macro.ResolveMacro(&m_argument, &m_manager, &m_object, m_item));
        EXPECT_EQ(macro.called, "macro");
    }
}

TEST_F(Macro, OtherItemsWithoutAnAttributeFailWithoutACall)
{
    m_item.SetAttrib(L"");
    for (const auto macroType : {KelMacroItem::MACROTYPE_ATTRIB, KelMacroItem::MACROTYPE_TEXT}) {
        const NotingMacro macro;
        m_item.SetMacroType(macroType);
        EXPECT_FALSE(macro.ResolveMacro(&m_argument, &m_manager, &m_object, m_item));
        EXPECT_EQ(macro.called, "");
        EXPECT_EQ(m_item.GetValue(), L"[M:KEY]");
    }
}

TEST_F(Macro, OperationsGetWhatTheCallWasGiven)
{
    const NotingMacro macro;
    macro.ResolveMacro(&m_argument, &m_manager, &m_object, m_item);
    EXPECT_EQ(macro.argument, &m_argument);
    EXPECT_EQ(macro.manager, &m_manager);
    EXPECT_EQ(macro.object, &m_object);
}

TEST_F(Macro, FailedItemShowsItsTokenOnlyWhenUnresolvedMacrosAreOutput)
{
    NotingMacro macro;
    macro.answer = false;
    m_manager.SetUnresolvedMacroOutputFlg(false);
    EXPECT_FALSE(macro.ResolveMacro(&m_argument, &m_manager, &m_object, m_item));
    EXPECT_EQ(m_item.GetValue(), L"before");
    m_manager.SetUnresolvedMacroOutputFlg(true);
    EXPECT_FALSE(macro.ResolveMacro(&m_argument, &m_manager, &m_object, m_item));
    EXPECT_EQ(m_item.GetValue(), L"[M:KEY]");
}

TEST_F(Macro, FailedItemWithoutAManagerKeepsItsValue)
{
    NotingMacro macro;
    macro.answer = false;
    EXPECT_FALSE(macro.ResolveMacro(nullptr, nullptr, nullptr, m_item));
    EXPECT_EQ(m_item.GetValue(), L"before");
}

// ---- what the base shows ----

TEST_F(Macro, MacroOfTheBaseIsItsTokenOrNothing)
{
    EXPECT_TRUE(m_macro.ResolveMacroValue(&m_argument, &m_manager, &m_object, m_item));
    EXPECT_EQ(m_item.GetValue(), L"[M:KEY]");
    m_manager.SetUnresolvedMacroOutputFlg(false);
    EXPECT_TRUE(m_macro.ResolveMacroValue(&m_argument, &m_manager, &m_object, m_item));
    EXPECT_EQ(m_item.GetValue(), L"");
    m_item.SetValue(L"before");
    EXPECT_TRUE(m_macro.ResolveMacroValue(nullptr, nullptr, nullptr, m_item));
    EXPECT_EQ(m_item.GetValue(), L"");
}

TEST_F(Macro, TextsAndIntegersAreShownAsStored)
{
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_CHAR, L" 管きょ A [M:X] "), L" 管きょ A [M:X] ");
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_INT, L"007"), L"007");
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_INT, L"no number"), L"no number");
}

TEST_F(Macro, AttributeThatTheObjectLacksIsEmptyForTextsAndIntegers)
{
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_CHAR), L"");
    m_item.SetValue(L"before");
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_INT), L"");
}

TEST_F(Macro, AttributeThatTheObjectLacksIsZeroWithItsDigitsForNumbers)
{
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_DOUBLE), L"0.0000");
    m_item.SetRoundFig(2);
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_DOUBLE), L"0.00");
    m_item.SetRoundFig(0);
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_DOUBLE), L"0");
}

TEST_F(Macro, NumbersAreRoundedInTheirModeAndPrintedWithTheSameDigits)
{
    EXPECT_EQ(Number(L"2.675", 2, 0), L"2.68");
    EXPECT_EQ(Number(L"2.679", 2, 1), L"2.67");
    EXPECT_EQ(Number(L"2.671", 2, 2), L"2.68");
    EXPECT_EQ(Number(L"-2.675", 2, 0), L"-2.68");
    EXPECT_EQ(Number(L"1234567.5", 0, 0), L"1234568");
    EXPECT_EQ(Number(L"-0.001", 2, 0), L"0.00");
    EXPECT_EQ(Number(L"3", 3, 0), L"3.000");
}

TEST_F(Macro, NumbersInModeThreeAreNotRoundedButPrintedWithTheSameDigits)
{
    EXPECT_EQ(Number(L"2.675", 2, 3), L"2.67") << "the nearest binary number lies below 2.675";
    EXPECT_EQ(Number(L"0.5", 4, 3), L"0.5000");
    EXPECT_EQ(Number(L"-0.001", 2, 3), L"-0.00");
}

TEST_F(Macro, NumbersThatAreNoneAreZero)
{
    EXPECT_EQ(Number(L"wide", 1, 0), L"0.0");
    EXPECT_EQ(Number(L"", 1, 0), L"0.0");
}

TEST_F(Macro, BoolsAreYesOrNoInTheActiveLanguage)
{
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_BOOL), L"No");
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_BOOL, L"1"), L"Yes");
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_BOOL, L"0"), L"No");
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::Japanese));
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_BOOL, L"1"), L"はい");
    EXPECT_EQ(Shown(KelMacroItem::DATATYPE_BOOL, L"0"), L"いいえ");
}

TEST_F(Macro, AttributesOfNoObjectFail)
{
    EXPECT_FALSE(m_macro.ResolveIntAttribValue(&m_argument, &m_manager, nullptr, m_item));
    EXPECT_FALSE(m_macro.ResolveDoubleAttribValue(&m_argument, &m_manager, nullptr, m_item));
    EXPECT_FALSE(m_macro.ResolveCharAttribValue(&m_argument, &m_manager, nullptr, m_item));
    EXPECT_FALSE(m_macro.ResolveBoolAttribValue(&m_argument, &m_manager, nullptr, m_item));
    EXPECT_EQ(m_item.GetValue(), L"before");
    EXPECT_FALSE(m_macro.ResolveMacro(&m_argument, &m_manager, nullptr, m_item));
    EXPECT_EQ(m_item.GetValue(), L"[M:KEY]");
}

TEST_F(Macro, AttributesNeedNoArgumentAndNoManager)
{
    m_object.WriteSubAttribute(L"key", L"1.5");
    EXPECT_TRUE(m_macro.ResolveIntAttribValue(nullptr, nullptr, &m_object, m_item));
    EXPECT_EQ(m_item.GetValue(), L"1.5");
    EXPECT_TRUE(m_macro.ResolveDoubleAttribValue(nullptr, nullptr, &m_object, m_item));
    EXPECT_EQ(m_item.GetValue(), L"1.5000");
    EXPECT_TRUE(m_macro.ResolveCharAttribValue(nullptr, nullptr, &m_object, m_item));
    EXPECT_EQ(m_item.GetValue(), L"1.5");
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
    EXPECT_TRUE(m_macro.ResolveBoolAttribValue(nullptr, nullptr, &m_object, m_item));
    EXPECT_EQ(m_item.GetValue(), L"Yes");
}

TEST_F(Macro, ResolvingChangesNothingButTheValue)
{
    m_item.SetDesc(L"Key");
    m_item.SetObjectId(17);
    Number(L"2.675", 2, 1);
    EXPECT_EQ(m_item.GetMacro(), L"[M:KEY]");
    EXPECT_EQ(m_item.GetAttrib(), L"key");
    EXPECT_EQ(m_item.GetDesc(), L"Key");
    EXPECT_EQ(m_item.GetObjectId(), 17u);
    EXPECT_EQ(m_item.GetRoundFig(), 2);
    EXPECT_EQ(m_item.GetRoundMode(), 1);
}

// ---- the rest of the base ----

TEST_F(Macro, TargetIsTheResolversOwnType)
{
    EXPECT_TRUE(m_macro.IsTargetObjectType(objectdata::Span));
    EXPECT_FALSE(m_macro.IsTargetObjectType(objectdata::Node));
    m_macro.SetObjectType(objectdata::Node);
    EXPECT_EQ(m_macro.GetObjectType(), objectdata::Node);
    EXPECT_TRUE(m_macro.IsTargetObjectType(objectdata::Node));
}

TEST_F(Macro, NewResolverHasNoType)
{
    const BaseMacro macro;
    EXPECT_EQ(macro.GetObjectType(), -1);
    EXPECT_TRUE(macro.IsTargetObjectType(objectdata::NoOwner));
}

TEST_F(Macro, BaseOffersNoMacrosAndLeavesTheArray)
{
    const KelMacro& macro = m_macro;
    obmgr::MacroItems items;
    items.Add(m_item);
    EXPECT_EQ(macro.GetUIInfo(items), 0);
    EXPECT_EQ(macro.GetUIInfo(&m_argument, items), 0);
    EXPECT_EQ(macro.GetUIInfo(nullptr, items), 0);
    EXPECT_EQ(items.GetSize(), 1);
}

TEST_F(Macro, CopyOfTheBaseDoesNothing)
{
    const BaseMacro other(objectdata::Node);
    KelMacro& macro = m_macro;
    EXPECT_EQ(macro.Copy(&other), &m_macro);
    EXPECT_EQ(macro.Copy(nullptr), &m_macro);
    EXPECT_EQ(m_macro.GetObjectType(), objectdata::Span);
}

TEST_F(Macro, CloneThroughTheBaseHasTheType)
{
    const KelMacro& macro = m_macro;
    const std::unique_ptr<KelMacro> clone(macro.Clone());
    EXPECT_EQ(clone->GetObjectType(), objectdata::Span);
    EXPECT_TRUE(clone->IsKindOf(RUNTIME_CLASS(KelMacro)));
    EXPECT_EQ(RUNTIME_CLASS(KelMacro)->CreateObject(), nullptr) << "the base itself cannot be made";
}

TEST_F(Macro, BaseNeedsNoParameter)
{
    KelMacro& macro = m_macro;
    int parameter = 7;
    EXPECT_FALSE(macro.SetParameter(nullptr, 17, &parameter, m_item));
    EXPECT_EQ(m_item.GetValue(), L"before");
    EXPECT_EQ(m_item.GetObjectId(), 0u);
}
