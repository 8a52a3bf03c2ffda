// The default attribute table.

#include "framework/Exception.h"
#include "support/Store.h"

#include <gmock/gmock.h>

namespace {

CString ValueIn(const CMapStringToString& values, const wchar_t* key)
{
    CString value = L"(absent)";
    values.Lookup(key, value);
    return value;
}

class ObDefManager : public testing::Test {
protected:
    CObDefault* AddEntry(const wchar_t* tag, const wchar_t* key, const wchar_t* value)
    {
        auto* const entry = new CObDefault(objectdata::Name2Type(tag), tag);
        entry->GetSubattribute().SetAt(key, value);
        m_table.GetDefList().AddTail(entry);
        return entry;
    }
    CObDefManager m_table;
    CMapStringToString m_values;
};

TEST_F(ObDefManager, IsMadeByItsRunTimeClassEmptyAndUnedited)
{
    CObject* const made = CObDefManager::GetThisClass()->CreateObject();
    ASSERT_NE(dynamic_cast<CObDefManager*>(made), nullptr);
    EXPECT_FALSE(static_cast<CObDefManager*>(made)->IsEdit());
    EXPECT_TRUE(static_cast<CObDefManager*>(made)->GetDefList().IsEmpty());
    delete made;
}

TEST_F(ObDefManager, OfTwoEntriesOfATagTheFirstCounts)
{
    CObDefault* const first = AddEntry(L"span", L"k", L"1");
    AddEntry(L"node", L"k", L"n");
    CObDefault* const second = AddEntry(L"span", L"k", L"2");
    EXPECT_TRUE(m_table.GetDefValue(L"span", m_values));
    EXPECT_EQ(ValueIn(m_values, L"k"), L"1");
    CTypedPtrList<CObList, CObDefault*> entries;
    entries.AddTail(first);
    EXPECT_TRUE(m_table.GetDefValueAll(L"span", entries));
    ASSERT_EQ(entries.GetCount(), 2);
    EXPECT_EQ(entries.GetHead(), first);
    EXPECT_EQ(entries.GetTail(), second);
    EXPECT_FALSE(m_table.GetDefValueAll(L"web", entries));
    EXPECT_TRUE(entries.IsEmpty());
}

TEST_F(ObDefManager, ReadingEmptiesTheCallersMapInAnyCase)
{
    AddEntry(L"span", L"k", L"1");
    m_values.SetAt(L"old", L"x");
    EXPECT_TRUE(m_table.GetDefValue(L"span", m_values));
    EXPECT_EQ(m_values.GetCount(), 1);
    EXPECT_FALSE(m_table.GetDefValue(L"node", m_values));
    EXPECT_TRUE(m_values.IsEmpty());
}

TEST_F(ObDefManager, SettingReplacesAndUpdatingAdds)
{
    AddEntry(L"span", L"a", L"1");
    CMapStringToString given;
    given.SetAt(L"b", L"2");
    EXPECT_TRUE(m_table.UpdateDefValue(L"span", given));
    EXPECT_TRUE(m_table.IsEdit());
    m_table.GetDefValue(L"span", m_values);
    EXPECT_EQ(ValueIn(m_values, L"a"), L"1");
    EXPECT_EQ(ValueIn(m_values, L"b"), L"2");
    m_table.SetEditFlg(false);
    given.SetAt(L"b", L"3");
    EXPECT_TRUE(m_table.SetDefValue(L"span", given));
    EXPECT_TRUE(m_table.IsEdit());
    m_table.GetDefValue(L"span", m_values);
    EXPECT_EQ(ValueIn(m_values, L"a"), L"(absent)");
    EXPECT_EQ(ValueIn(m_values, L"b"), L"3");
}

TEST_F(ObDefManager, ChangingATagWithoutEntryClearsTheEditFlagAndAddsNothing)
{
    for (const auto change : {&CObDefManager::SetDefValue, &CObDefManager::UpdateDefValue}) {
        m_table.SetEditFlg(true);
        EXPECT_FALSE((m_table.*change)(L"span", m_values));
        EXPECT_FALSE(m_table.IsEdit());
        EXPECT_TRUE(m_table.GetDefList().IsEmpty());
    }
    AddEntry(L"node", L"k", L"1");
    m_table.SetEditFlg(true);
    EXPECT_FALSE(m_table.SetDefValue(L"span", m_values));
    EXPECT_FALSE(m_table.IsEdit());
    EXPECT_EQ(m_table.GetDefList().GetCount(), 1);
}

TEST_F(ObDefManager, AnEntrysOwnMapMayBeHandedBack)
{
    CObDefault* const entry = AddEntry(L"span", L"k", L"1");
    EXPECT_TRUE(m_table.SetDefValue(L"span", entry->GetSubattribute()));
    EXPECT_TRUE(m_table.UpdateDefValue(L"span", entry->GetSubattribute()));
    EXPECT_EQ(ValueIn(entry->GetSubattribute(), L"k"), L"1");
}

TEST_F(ObDefManager, TheListIsReplacedByCopies)
{
    AddEntry(L"node", L"k", L"1");
    CObDefManager other;
    other.GetDefList().AddTail(new CObDefault(objectdata::Span, L"span"));
    m_table.SetDefList(other.GetDefList());
    ASSERT_EQ(m_table.GetDefList().GetCount(), 1);
    EXPECT_NE(m_table.GetDefList().GetHead(), other.GetDefList().GetHead());
    EXPECT_EQ(m_table.GetDefList().GetHead()->GetObjName(), L"span");
    m_table.SetDefList(m_table.GetDefList());
    EXPECT_EQ(m_table.GetDefList().GetCount(), 1);
    m_table.ClearDEFLIST();
    EXPECT_TRUE(m_table.GetDefList().IsEmpty());
}

TEST(DefaultsOfTheProcess, AreSharedByAllManagers)
{
    const support::DefaultsForAllTags defaults;
    CObjectManager first;
    CObjectManager second;
    CMapStringToString values;
    values.SetAt(L"k", L"v");
    obmgr::GetObDefManager()->SetDefValue(L"node", values);
    EXPECT_EQ(first.CreateNode(support::Values())->GetSubAttribute(L"k"), L"v");
    EXPECT_EQ(second.CreateNode(support::Values())->GetSubAttribute(L"k"), L"v");
}

TEST(DefaultsOfTheProcess, MayBeInstalledTwice)
{
    auto* const table = new CObDefManager;
    CObjectManager::ReSetDefManager(table);
    CObjectManager::ReSetDefManager(table);
    EXPECT_EQ(obmgr::GetObDefManager(), table);
    CObjectManager::ReSetDefManager(nullptr);
    ASSERT_NE(obmgr::GetObDefManager(), nullptr);
    EXPECT_TRUE(obmgr::GetObDefManager()->GetDefList().IsEmpty());
}

TEST(DefaultsOfTheProcess, APenGivesItsLookToANewOne)
{
    const support::DefaultsForAllTags defaults;
    CMapStringToString values;
    values.SetAt(L"look", L"default");
    obmgr::GetObDefManager()->SetDefValue(L"drawpendat", values);
    CObjectManager manager;
    const long pen = manager.CreateDrawpendat(support::values({{L"look", L"mine"}}))->GetId32();
    const long node = manager.CreateNode(support::Values())->GetId32();

    EXPECT_TRUE(manager.GetDefValue(static_cast<unsigned long>(pen), L"drawpendat", values));
    EXPECT_EQ(ValueIn(values, L"look"), L"mine");
    for (const unsigned long noPen : {0ul, static_cast<unsigned long>(node), 99ul}) {
        EXPECT_TRUE(manager.GetDefValue(noPen, L"drawpendat", values));
        EXPECT_EQ(ValueIn(values, L"look"), L"default");
    }
    EXPECT_FALSE(manager.GetDefValue(0, L"no tag", values));
    EXPECT_TRUE(values.IsEmpty());
}

TEST(DefaultsOfTheProcess, TheProjectNamesItsDefaultMethods)
{
    const support::DefaultsForAllTags defaults;
    support::OpenManager manager;
    EXPECT_THROW(manager.GetDefFunctionName(0), CInvalidArgException);
    EXPECT_THROW(manager.GetDefFunctionName(6), CInvalidArgException);
    const wchar_t* const keys[] = {L"defsv", L"defrural", L"defqr", L"defcombi", L"defsvvac", L"defruralvac"};
    CProject* const project = manager.CreateProject(support::Values());
    for (const wchar_t* key : keys)
        project->WriteSubAttribute(key, key);
    for (int kind = 0; kind < 6; ++kind)
        EXPECT_EQ(manager.GetDefFunctionName(kind), keys[kind]);
    EXPECT_EQ(manager.GetDefFunctionName(6), L"");
    EXPECT_EQ(manager.GetDefFunctionName(-1), L"");
}

} // namespace
