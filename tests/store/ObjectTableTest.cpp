// One table: adding, removing, finding, clearing, walking.

#include "framework/Exception.h"
#include "store/ObjectDataBase.h"
#include "support/Store.h"

#include <gmock/gmock.h>

#include <memory>
#include <random>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using NodeTable = CObjectDataBase<CNode>;

// The object is the table's only when it took it.
bool AddNode(NodeTable& table, long id, unsigned long objectId)
{
    auto node = std::make_unique<CNode>(objectId);
    const bool added = table.Add(id, node.get());
    if (added) node.release();
    return added;
}

bool AddNode(NodeTable& table, long id)
{
    return AddNode(table, id, static_cast<unsigned long>(id));
}

std::vector<long> Ids(const NodeTable& table)
{
    std::vector<long> ids;
    for (const CNode* node : table)
        ids.push_back(node->GetId32());
    return ids;
}

TEST(ObjectTable, AddTakesIdsBelowTheLimit)
{
    NodeTable table;
    EXPECT_TRUE(AddNode(table, 2147483546));
    EXPECT_FALSE(AddNode(table, 2147483547));
    EXPECT_FALSE(AddNode(table, 2147483647));
    EXPECT_TRUE(AddNode(table, -1));
    EXPECT_TRUE(AddNode(table, 0));
    EXPECT_TRUE(AddNode(table, -2147483647L - 1));
    EXPECT_THAT(Ids(table), ElementsAre(2147483546, -1, 0, -2147483647L - 1));
    EXPECT_NE(table.Find(-1), nullptr);
    EXPECT_NE(table.Find(0), nullptr);
}

TEST(ObjectTable, AddRefusesAnIdThatIsInTheTable)
{
    NodeTable table;
    EXPECT_TRUE(AddNode(table, 5));
    EXPECT_FALSE(AddNode(table, 5));
    EXPECT_EQ(table.GetCount(), 1);
}

TEST(ObjectTable, AddRefusesWhatItCannotOwn)
{
    NodeTable table;
    NodeTable other;
    EXPECT_FALSE(table.Add(1, nullptr));
    ASSERT_TRUE(AddNode(table, 1));
    EXPECT_FALSE(table.Add(2, table.Find(1))) << "an object is in the list once";
    EXPECT_FALSE(other.Add(2, table.Find(1))) << "and in one table";
    CNode* const node = table.Find(1);
    table.Remove(node);
    EXPECT_FALSE(other.Add(1, node)) << "the first table still owns it";
    EXPECT_EQ(table.Untyped().RetiredCount(), 1u);
    EXPECT_TRUE(other.IsEmpty());
}

TEST(ObjectTable, ARemovedObjectMayBeAddedAgain)
{
    NodeTable table;
    AddNode(table, 1);
    AddNode(table, 2);
    CNode* const node = table.Find(1);
    table.Remove(node);
    EXPECT_TRUE(table.Add(1, node));
    EXPECT_THAT(Ids(table), ElementsAre(2, 1));
    EXPECT_EQ(table.Untyped().RetiredCount(), 0u);
}

TEST(ObjectTable, RemovingNullIsFalse)
{
    NodeTable table;
    AddNode(table, 1);
    EXPECT_FALSE(table.Remove(nullptr));
    EXPECT_EQ(table.GetCount(), 1);
}

TEST(ObjectTable, RemovingAForeignObjectIsAnInvalidArgument)
{
    NodeTable table;
    AddNode(table, 1);
    CNode foreign(2);
    EXPECT_THROW(table.Remove(&foreign), CInvalidArgException);
    CNode* const removed = table.Find(1);
    EXPECT_TRUE(table.Remove(removed));
    EXPECT_THROW(table.Remove(removed), CInvalidArgException);
    EXPECT_EQ(table.Untyped().RetiredCount(), 1u);
}

TEST(ObjectTable, RemoveTakesEveryObjectWithTheId)
{
    NodeTable table;
    for (long id = 1; id <= 4; ++id)
        AddNode(table, id);
    CNode* const second = table.Find(2);
    CNode* const third = table.Find(3);
    third->SetObjectId(2);
    EXPECT_TRUE(table.Remove(third));
    EXPECT_THAT(Ids(table), ElementsAre(1, 4));
    EXPECT_EQ(second->GetId32(), 2);
    EXPECT_EQ(table.Untyped().RetiredCount(), 2u);
    // The id list had one 2 and still has the 3.
    EXPECT_TRUE(AddNode(table, 2));
    EXPECT_FALSE(AddNode(table, 3));
}

TEST(ObjectTable, FindAsksTheObjectsAndAddAsksTheIdList)
{
    NodeTable table;
    AddNode(table, 1);
    table.Find(1)->SetObjectId(9);
    EXPECT_EQ(table.Find(1), nullptr);
    EXPECT_NE(table.Find(9), nullptr);
    EXPECT_FALSE(AddNode(table, 1));
    EXPECT_TRUE(AddNode(table, 9));
    EXPECT_THAT(Ids(table), ElementsAre(9, 9));
    table.Untyped().ResetIdList();
    EXPECT_TRUE(AddNode(table, 1));
    EXPECT_FALSE(AddNode(table, 9));
}

TEST(ObjectTable, TheIdOfTheCallNeedNotBeTheObjects)
{
    NodeTable table;
    EXPECT_TRUE(AddNode(table, 5, 6));
    EXPECT_EQ(table.Find(5), nullptr);
    EXPECT_EQ(table.Find(6)->GetId32(), 6);
    EXPECT_FALSE(AddNode(table, 5));
    EXPECT_TRUE(AddNode(table, 6, 7));
    table.Remove(table.Find(6)); // takes the 6 off the id list, which was the other object's
    EXPECT_TRUE(AddNode(table, 6));
    EXPECT_FALSE(AddNode(table, 5));
}

TEST(ObjectTable, FindGivesTheFirstOfEqualIds)
{
    NodeTable table;
    for (long id = 1; id <= 3; ++id)
        AddNode(table, id);
    CNode* const first = table.Find(1);
    CNode* const third = table.Find(3);
    third->SetObjectId(2);
    EXPECT_NE(table.Find(2), third);
    first->SetObjectId(2);
    EXPECT_EQ(table.Find(2), first);
    first->SetObjectId(1);
    EXPECT_NE(table.Find(2), third);
    EXPECT_NE(table.Find(2), nullptr);
}

TEST(ObjectTable, ClearEmptiesListAndRetiredObjects)
{
    NodeTable table;
    AddNode(table, 1);
    AddNode(table, 2);
    table.Remove(table.Find(1));
    table.Find(2)->SetObjectId(3);
    table.Clear();
    EXPECT_TRUE(table.IsEmpty());
    EXPECT_EQ(table.Untyped().RetiredCount(), 0u);
    EXPECT_EQ(table.Find(3), nullptr);
    EXPECT_TRUE(AddNode(table, 2));
    EXPECT_TRUE(AddNode(table, 3));
}

TEST(ObjectTable, AWalkMayRemoveWhatItStandsOn)
{
    for (const bool inTransaction : {false, true}) {
        NodeTable table;
        for (long id = 1; id <= 1000; ++id)
            AddNode(table, id);
        if (inTransaction) table.Untyped().Begin();
        std::vector<long> visited;
        for (CNode* node : table) {
            visited.push_back(node->GetId32());
            table.Remove(node);
        }
        EXPECT_EQ(visited.size(), 1000u);
        EXPECT_TRUE(table.IsEmpty());
        EXPECT_EQ(table.Untyped().RetiredCount(), 1000u);
    }
}

TEST(ObjectTable, AWalkSeesWhatIsAddedAndNotWhatIsRemoved)
{
    NodeTable table;
    for (long id = 1; id <= 3; ++id)
        AddNode(table, id);
    std::vector<long> visited;
    for (const CNode* node : table) {
        visited.push_back(node->GetId32());
        if (node->GetId32() == 1) {
            table.Remove(table.Find(2));
            AddNode(table, 4);
        }
    }
    EXPECT_THAT(visited, ElementsAre(1, 3, 4));
}

TEST(ObjectTable, KeepsItsOrderWhenMostIsRemoved)
{
    NodeTable table;
    for (long id = 1; id <= 1000; ++id)
        AddNode(table, id);
    for (long id = 1; id <= 999; ++id)
        table.Find(id + 1)->SetObjectId(static_cast<unsigned long>(id + 1 == 500 ? 1 : id + 1));
    for (long id = 2; id <= 990; ++id)
        if (CNode* const node = table.Find(id)) table.Remove(node);
    EXPECT_THAT(Ids(table), ElementsAre(1, 1, 991, 992, 993, 994, 995, 996, 997, 998, 999, 1000));
    EXPECT_EQ(table.Find(995)->GetId32(), 995);
    EXPECT_TRUE(table.Remove(table.Find(1)));
    EXPECT_EQ(table.GetCount(), 10);
    EXPECT_EQ(table.Find(1), nullptr);
    EXPECT_TRUE(AddNode(table, 2));
    EXPECT_THAT(Ids(table), testing::Contains(2));
}

TEST(ObjectTable, ATableMayEndWithObjectsOfEveryState)
{
    NodeTable table;
    for (long id = 1; id <= 4; ++id)
        AddNode(table, id);
    table.Remove(table.Find(1));
    table.Untyped().Begin();
    table.Remove(table.Find(2));
    table.Find(3)->SetStatus(1);
    AddNode(table, 5);
}

TEST(ObjectTable, IdsInRunsAndAtRandomAreFound)
{
    obmgr::IdIndex index;
    std::mt19937 random(7);
    std::vector<std::int32_t> ids;
    for (std::int32_t id = -300; id < 3000; ++id)
        ids.push_back(id);
    for (int i = 0; i < 3000; ++i)
        ids.push_back(static_cast<std::int32_t>(random() | 0x4000'0000u));
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    std::shuffle(ids.begin(), ids.end(), random);
    for (std::size_t i = 0; i < ids.size(); ++i)
        index.Insert(ids[i], static_cast<std::uint32_t>(i));
    for (std::size_t i = 0; i < ids.size(); i += 2)
        index.Erase(ids[i]);
    for (std::size_t i = 0; i < ids.size(); ++i)
        ASSERT_EQ(index.Find(ids[i]), i % 2 == 0 ? obmgr::IdIndex::kNone : static_cast<std::uint32_t>(i)) << ids[i];
    EXPECT_EQ(obmgr::IdIndex().Find(3), obmgr::IdIndex::kNone);
}

// ---- queries by value ----

std::vector<long> Hits(const NodeTable& table, const wchar_t* text)
{
    std::vector<long> ids;
    table.Untyped().VisitByText(L"k", text, [&](CPipeObject& object) {
        ids.push_back(object.GetId32());
        return true;
    });
    return ids;
}

TEST(ObjectTable, AValueQueryFollowsEveryChange)
{
    NodeTable table;
    for (long id = 1; id <= 3; ++id)
        AddNode(table, id);
    EXPECT_THAT(Hits(table, L"x"), IsEmpty());
    EXPECT_THAT(Hits(table, L""), ElementsAre(1, 2, 3)) << "an absent key reads as the empty text";
    table.Find(3)->WriteSubAttribute(L"k", L"x");
    table.Find(1)->WriteSubAttribute(L"k", L"x");
    EXPECT_THAT(Hits(table, L"x"), ElementsAre(1, 3));
    table.Untyped().Begin();
    table.Find(1)->WriteSubAttribute(L"k", L"y");
    table.Remove(table.Find(3));
    AddNode(table, 4);
    table.Find(4)->WriteSubAttribute(L"k", L"x");
    EXPECT_THAT(Hits(table, L"x"), ElementsAre(4));
    table.Untyped().Abort();
    EXPECT_THAT(Hits(table, L"x"), ElementsAre(1, 3));
    EXPECT_THAT(Hits(table, L"y"), IsEmpty());
    EXPECT_THAT(Hits(table, L""), ElementsAre(2));
}

TEST(ObjectTable, AQueryMayRemoveWhatItFinds)
{
    NodeTable table;
    for (long id = 1; id <= 200; ++id)
        AddNode(table, id);
    table.Untyped().VisitByText(L"k", L"", [&](CPipeObject& object) { return table.Untyped().Remove(&object); });
    EXPECT_TRUE(table.IsEmpty());
}

TEST(ObjectTable, AQueryEndsWhenTheVisitorSaysSo)
{
    NodeTable table;
    for (long id = 1; id <= 3; ++id)
        AddNode(table, id);
    int visits = 0;
    table.Untyped().VisitByText(L"k", L"", [&](CPipeObject&) { return ++visits < 2; });
    EXPECT_EQ(visits, 2);
}

} // namespace
