// Every family member of every type. The rows are made from the type table, so that no type is forgotten.

#include "support/FamilyTable.h"

#include <gmock/gmock.h>

#include <memory>

namespace {

using support::values;
using support::Values;
using testing::ElementsAre;
using testing::IsEmpty;
using Ids = support::IdList;
using support::familiesWith;
using support::Family;

constexpr long kOwner = 71;
constexpr long kOtherOwner = 72;

class FamilyTest : public testing::TestWithParam<const Family*> {
protected:
    obmgr::ObjectTable& Table() { return GetParam()->table(m_manager); }
    std::unique_ptr<CPipeObject> Make(long id) const
    {
        std::unique_ptr<CPipeObject> record(static_cast<CPipeObject*>(GetParam()->make()));
        record->SetObjectId(static_cast<unsigned long>(id));
        return record;
    }
    // A record in the table, owned by `owner` when its type has an owner.
    CPipeObject* Put(long id, const wchar_t* order = L"0", long owner = kOwner)
    {
        auto record = Make(id);
        if (!record->Links().empty()) record->SetLink(0, static_cast<std::int32_t>(owner));
        record->WriteSubAttribute(L"order", order);
        return Table().Add(id, record.get()) ? record.release() : nullptr;
    }
    // Five records; in table order 5 3 9 1 7, by "order" 9 3 1 7 5; of the owner 5 9 1, by "order" 9 1 5.
    void PutFive()
    {
        Put(5, L"4");
        Put(3, L"-1", kOtherOwner);
        Put(9, L"-20");
        Put(1, L"2");
        Put(7, L"3", kOtherOwner);
    }
    CString Tag() const
    {
        const std::string_view tag = obmgr::RecordOf(GetParam()->type).tag;
        return std::wstring(tag.begin(), tag.end()).c_str();
    }
    // What a list member appends to a list that holds -1.
    std::vector<long> Listed(bool (*list)(const CObjectManager&, Ids&)) const
    {
        return AppendedToMinusOne([&](Ids& ids) { return list(m_manager, ids); });
    }
    std::vector<long> Listed(bool (*list)(const CObjectManager&, long, Ids&)) const
    {
        return AppendedToMinusOne([&](Ids& ids) { return list(m_manager, kOwner, ids); });
    }
    template <class Fill> static std::vector<long> AppendedToMinusOne(Fill&& fill)
    {
        Ids ids;
        ids.AddTail(-1);
        const bool any = fill(ids);
        EXPECT_EQ(any, ids.GetCount() > 1);
        return support::toVector(ids);
    }

    support::DefaultsForAllTags m_defaults;
    support::OpenManager m_manager;
};

#define OBM_SUITE(Suite, member)                                                                                       \
    class Suite : public FamilyTest {};                                                                                \
    INSTANTIATE_TEST_SUITE_P(Families, Suite, testing::ValuesIn(familiesWith(&Family::member)),                        \
                             [](const auto& row) { return row.param->name; });

// ---- Get<T>Db ----

OBM_SUITE(EveryTable, table)

TEST_P(EveryTable, IsTheTableOfItsType)
{
    EXPECT_EQ(&Table(), &m_manager.TableOf(GetParam()->type));
    ASSERT_NE(Put(4), nullptr);
    EXPECT_EQ(m_manager.GetAllDataCount(), 1);
    EXPECT_EQ(Table().Find(4)->GetObjectType(), GetParam()->type);
}

TEST(Families, HaveNinetyThreeTables)
{
    EXPECT_EQ(familiesWith(&Family::table).size(), 93u);
}

// ---- Create<T> ----

OBM_SUITE(Creating, create)

TEST_P(Creating, GivesTheNextIdAndTheValuesOverTheDefaults)
{
    CMapStringToString defaults;
    defaults.SetAt(L"kept", L"default");
    defaults.SetAt(L"overridden", L"default");
    ASSERT_TRUE(obmgr::GetObDefManager()->SetDefValue(Tag(), defaults));
    m_manager.SetObjectId(40);
    const Values given = values({{L"overridden", L"1"}, {L"new", L"x"}, {L"overridden", L"2"}});

    long id = -1;
    ASSERT_TRUE(GetParam()->create(m_manager, kOwner, kOwner + 1, given, &id));
    EXPECT_EQ(id, 41);
    CPipeObject* const second = GetParam()->createObject(m_manager, kOwner, kOwner + 1, given);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->GetObjectId(), 42u);
    EXPECT_EQ(Table().Find(42), second);
    Table().ForEach([](const CPipeObject& record) {
        EXPECT_EQ(record.GetSubAttribute(L"kept"), L"default");
        EXPECT_EQ(record.GetSubAttribute(L"overridden"), L"2");
        EXPECT_EQ(record.GetSubAttribute(L"new"), L"x");
        long link = kOwner;
        for (const std::int32_t value : record.Links())
            EXPECT_EQ(value, link++);
    });
    EXPECT_EQ(Table().Count(), 2u);
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 42);
}

TEST_P(Creating, NeedsNoPlaceForTheId)
{
    EXPECT_TRUE(GetParam()->create(m_manager, kOwner, kOwner + 1, Values(), nullptr));
    EXPECT_EQ(Table().Count(), 1u);
}

TEST_P(Creating, WithoutDefaultsFailsYetLeavesTheObjectWithoutAttributes)
{
    CObjectManager::ReSetDefManager(nullptr);
    long id = -1;
    EXPECT_FALSE(GetParam()->create(m_manager, kOwner, kOwner + 1, values({{L"a", L"b"}}), &id));
    EXPECT_EQ(id, -1);
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 1);
    EXPECT_EQ(m_manager.GetAllDataCount(), 1);
    ASSERT_NE(Table().Find(1), nullptr);
    EXPECT_TRUE(Table().Find(1)->GetAttributes().IsEmpty());
    EXPECT_EQ(GetParam()->createObject(m_manager, kOwner, kOwner + 1, Values()), nullptr);
    EXPECT_EQ(m_manager.GetAllDataCount(), 2);
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 2);
}

TEST_P(Creating, AnIdThatTheTableRefusesIsUsedUp)
{
    Put(5);
    m_manager.SetObjectId(4);
    long id = -1;
    EXPECT_FALSE(GetParam()->create(m_manager, kOwner, kOwner + 1, Values(), &id));
    EXPECT_EQ(id, -1);
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 5);
    m_manager.SetObjectId(2147483546);
    EXPECT_EQ(GetParam()->createObject(m_manager, kOwner, kOwner + 1, Values()), nullptr);
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 2147483547);
    EXPECT_EQ(m_manager.GetAllDataCount(), 1);
}

OBM_SUITE(CreatingFromAMap, createFromMap)

TEST_P(CreatingFromAMap, GivesTheIdAndTheValuesOverTheDefaults)
{
    CMapStringToString defaults;
    defaults.SetAt(L"kept", L"default");
    defaults.SetAt(L"overridden", L"default");
    ASSERT_TRUE(obmgr::GetObDefManager()->SetDefValue(Tag(), defaults));
    CMapStringToString given;
    given.SetAt(L"overridden", L"mine");
    EXPECT_EQ(GetParam()->createFromMap(m_manager, given), 1u);
    EXPECT_EQ(Table().Find(1)->GetSubAttribute(L"kept"), L"default");
    EXPECT_EQ(Table().Find(1)->GetSubAttribute(L"overridden"), L"mine");
    EXPECT_EQ(given.GetCount(), 1) << "the caller's map stays as it is";
}

TEST_P(CreatingFromAMap, FailsAsTheOtherFormsDo)
{
    const CMapStringToString none;
    m_manager.SetObjectId(2147483546);
    EXPECT_EQ(GetParam()->createFromMap(m_manager, none), 0u);
    EXPECT_EQ(m_manager.GetAllDataCount(), 0);
    m_manager.SetObjectId(0);
    CObjectManager::ReSetDefManager(nullptr);
    EXPECT_EQ(GetParam()->createFromMap(m_manager, none), 0u);
    EXPECT_EQ(m_manager.GetAllDataCount(), 1);
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 1);
}

// ---- Get<T>Object, Get<T>ObjectOriginal ----

OBM_SUITE(GettingACopy, copy)

TEST_P(GettingACopy, GivesOneThatTheCallerOwns)
{
    CPipeObject* const live = Put(3, L"1");
    live->SetStatus(7);
    const std::unique_ptr<CPipeObject> copy(GetParam()->copy(m_manager, 3));
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy.get(), live);
    live->WriteSubAttribute(L"order", L"2");
    EXPECT_EQ(copy->GetSubAttribute(L"order"), L"1");
    EXPECT_EQ(copy->GetStatus(), 7);
    EXPECT_EQ(copy->GetObjectId(), 3u);
    EXPECT_TRUE(std::equal(copy->Links().begin(), copy->Links().end(), live->Links().begin(), live->Links().end()));
    copy->SetObjectId(4);
    EXPECT_EQ(Table().Find(3), live) << "a copy is in no table";
}

TEST_P(GettingACopy, OfAnUnknownIdGivesNull)
{
    Put(3);
    EXPECT_EQ(GetParam()->copy(m_manager, 4), nullptr);
    EXPECT_EQ(GetParam()->copy(m_manager, 0), nullptr);
}

OBM_SUITE(GettingTheLiveObject, live)

TEST_P(GettingTheLiveObject, GivesTheOneInTheTable)
{
    CPipeObject* const live = Put(3);
    EXPECT_EQ(GetParam()->live(m_manager, 3), live);
    EXPECT_EQ(GetParam()->live(m_manager, 4), nullptr);
    live->SetObjectId(4);
    EXPECT_EQ(GetParam()->live(m_manager, 3), nullptr);
    EXPECT_EQ(GetParam()->live(m_manager, 4), live);
}

// ---- Set<T>ObjectData ----

OBM_SUITE(Setting, set)

TEST_P(Setting, MovesTheDataAndKeepsTheGivenObject)
{
    CPipeObject* const live = Put(3, L"1");
    CPipeObject* const given = GetParam()->copy(m_manager, 3);
    given->WriteSubAttribute(L"order", L"2");
    given->SetStatus(4);
    if (!given->Links().empty()) given->SetLink(0, 999);
    GetParam()->set(m_manager, given);
    EXPECT_EQ(Table().Find(3), live) << "the data moves, not the object";
    EXPECT_EQ(live->GetSubAttribute(L"order"), L"2");
    EXPECT_EQ(live->GetStatus(), 4);
    for (const std::int32_t link : live->Links().first(live->Links().empty() ? 0 : 1))
        EXPECT_EQ(link, 999);
    EXPECT_EQ(Table().RetiredCount(), 1u);
    GetParam()->set(m_manager, given);
    EXPECT_EQ(Table().RetiredCount(), 1u) << "at most once on the retired list";
    EXPECT_EQ(given->GetSubAttribute(L"order"), L"2");
    EXPECT_EQ(Table().Count(), 1u);
}

TEST_P(Setting, ACopyOfADeletedObjectChangesNothingAndStaysTheCallers)
{
    Put(3);
    const std::unique_ptr<CPipeObject> given(GetParam()->copy(m_manager, 3));
    Table().Remove(Table().Find(3));
    GetParam()->set(m_manager, given.get());
    GetParam()->set(m_manager, nullptr);
    EXPECT_EQ(Table().Count(), 0u);
    EXPECT_EQ(Table().RetiredCount(), 1u);
}

TEST_P(Setting, TheLiveObjectItselfChangesNothing)
{
    CPipeObject* const live = Put(3, L"1");
    GetParam()->set(m_manager, live);
    EXPECT_EQ(Table().Find(3), live);
    EXPECT_EQ(live->GetSubAttribute(L"order"), L"1");
    EXPECT_EQ(Table().RetiredCount(), 0u);
}

// ---- Get<T>IdList ----

OBM_SUITE(ListingIds, ids)

TEST_P(ListingIds, AppendsInTheOrderOfTheType)
{
    EXPECT_THAT(Listed(GetParam()->ids), ElementsAre(-1));
    PutFive();
    if (GetParam()->isSorted)
        EXPECT_THAT(Listed(GetParam()->ids), ElementsAre(-1, 9, 3, 1, 7, 5));
    else
        EXPECT_THAT(Listed(GetParam()->ids), ElementsAre(-1, 5, 3, 9, 1, 7));
}

OBM_SUITE(ListingOwnedIds, ownedIds)

TEST_P(ListingOwnedIds, AppendsThoseOfTheOwnerInTheOrderOfTheType)
{
    Put(2, L"0", kOtherOwner);
    EXPECT_THAT(Listed(GetParam()->ownedIds), ElementsAre(-1));
    PutFive();
    if (GetParam()->isSorted)
        EXPECT_THAT(Listed(GetParam()->ownedIds), ElementsAre(-1, 9, 1, 5));
    else
        EXPECT_THAT(Listed(GetParam()->ownedIds), ElementsAre(-1, 5, 9, 1));
}

OBM_SUITE(ListingIdsAsAsked, idsByOrder)

TEST_P(ListingIdsAsAsked, SortsOnlyWhenAsked)
{
    EXPECT_THAT(Listed(GetParam()->idsByOrder), ElementsAre(-1));
    PutFive();
    EXPECT_THAT(Listed(GetParam()->ids), ElementsAre(-1, 5, 3, 9, 1, 7));
    EXPECT_THAT(Listed(GetParam()->idsByOrder), ElementsAre(-1, 9, 3, 1, 7, 5));
}

TEST(Families, TheSortedListsAreTheKnownOnes)
{
    std::vector<std::string> sorted;
    for (const Family* family : familiesWith(&Family::isSorted))
        sorted.emplace_back(family->name);
    EXPECT_THAT(sorted, ElementsAre("CWeb", "CAreaInq", "CAreaOutq", "CFixInq", "CIcpInq", "CMountInq", "COutq",
                                    "CProfilearea", "CProfilelayout", "CSheetarea"));
}

// ---- object lists ----

OBM_SUITE(ListingObjects, objects)

TEST_P(ListingObjects, AppendsLiveObjectsInTableOrder)
{
    EXPECT_THAT(Listed(GetParam()->objects), ElementsAre(-1));
    PutFive();
    EXPECT_THAT(Listed(GetParam()->objects), ElementsAre(-1, 5, 3, 9, 1, 7));
}

OBM_SUITE(ListingOwnedObjects, ownedObjects)

TEST_P(ListingOwnedObjects, AppendsThoseOfTheOwnerInTableOrder)
{
    EXPECT_THAT(Listed(GetParam()->ownedObjects), ElementsAre(-1));
    PutFive();
    EXPECT_THAT(Listed(GetParam()->ownedObjects), ElementsAre(-1, 5, 9, 1));
}

OBM_SUITE(ListingConstObjects, constObjects)

TEST_P(ListingConstObjects, AppendsThemInTableOrder)
{
    EXPECT_THAT(Listed(GetParam()->constObjects), ElementsAre(-1));
    PutFive();
    EXPECT_THAT(Listed(GetParam()->constObjects), ElementsAre(-1, 5, 3, 9, 1, 7));
}

// ---- Delete<T>Object ----

OBM_SUITE(Deleting, remove)

TEST_P(Deleting, TakesTheObjectOutAndKeepsItReadable)
{
    PutFive();
    const CPipeObject* const object = Table().Find(9);
    EXPECT_TRUE(GetParam()->remove(m_manager, 9));
    EXPECT_EQ(Table().Find(9), nullptr);
    EXPECT_EQ(m_manager.GetAllDataCount(), 4);
    EXPECT_EQ(object->GetSubAttribute(L"order"), L"-20");
    EXPECT_FALSE(GetParam()->remove(m_manager, 9));
    EXPECT_FALSE(GetParam()->remove(m_manager, 1000));
    EXPECT_EQ(m_manager.GetAllDataCount(), 4);
    EXPECT_EQ(object->GetSubAttribute(L"order"), L"-20");
    m_manager.BeginTransaction();
    m_manager.CommitTransaction();
    EXPECT_EQ(Table().RetiredCount(), 0u);
}

} // namespace
