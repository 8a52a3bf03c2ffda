// Begin, commit and abort: nesting, ids, what comes back and what stays readable.

#include "framework/Exception.h"
#include "support/Store.h"

#include <gmock/gmock.h>

#include <memory>

namespace {

using support::idsOf;
using support::values;
using testing::ElementsAre;
using testing::IsEmpty;

class Transactions : public testing::Test {
protected:
    std::vector<long> Nodes() const
    {
        std::vector<long> ids;
        for (const CNode* node : m_manager.GetNodeDb())
            ids.push_back(node->GetId32());
        return ids;
    }
    CNode* NewNode(const wchar_t* order = L"0") { return m_manager.CreateNode(values({{L"order", order}})); }
    CString OrderOf(long id) const { return m_manager.GetNodeObjectOriginal(id)->GetSubAttribute(L"order"); }
    obmgr::ObjectTable& NodeTable() { return m_manager.GetNodeDb().Untyped(); }

    support::DefaultsForAllTags m_defaults;
    support::OpenManager m_manager;
};

TEST_F(Transactions, OnlyTheOutermostBeginTakesASnapshotAndOnlyTheLastCommitIsFinal)
{
    NewNode(L"1");
    m_manager.BeginTransaction();
    m_manager.GetNodeObjectOriginal(1)->WriteSubAttribute(L"order", L"2");
    m_manager.BeginTransaction();
    m_manager.GetNodeObjectOriginal(1)->WriteSubAttribute(L"order", L"3");
    m_manager.CommitTransaction();
    EXPECT_EQ(NodeTable().TransactionCount(), 1u);
    EXPECT_EQ(NodeTable().SavedCount(), 1u) << "the snapshot is still there";
    m_manager.CommitTransaction();
    EXPECT_EQ(NodeTable().TransactionCount(), 0u);
    EXPECT_EQ(NodeTable().SavedCount(), 0u);
    EXPECT_EQ(OrderOf(1), L"3");
}

TEST_F(Transactions, AnInnerAbortHasNoEffectOfItsOwn)
{
    m_manager.BeginTransaction();
    m_manager.BeginTransaction();
    NewNode();
    m_manager.AbortTransaction();
    m_manager.CommitTransaction();
    EXPECT_THAT(Nodes(), ElementsAre(1));
}

TEST_F(Transactions, AnInnerCommitDoesNotSaveFromTheOuterAbort)
{
    m_manager.BeginTransaction();
    m_manager.BeginTransaction();
    NewNode();
    m_manager.CommitTransaction();
    EXPECT_THAT(Nodes(), ElementsAre(1));
    m_manager.AbortTransaction();
    EXPECT_THAT(Nodes(), IsEmpty());
}

TEST_F(Transactions, AnAbortedIdIsIssuedAgain)
{
    NewNode();
    m_manager.BeginTransaction();
    EXPECT_EQ(NewNode()->GetObjectId(), 2u);
    m_manager.AbortTransaction();
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 1);
    EXPECT_EQ(NewNode()->GetObjectId(), 2u);
}

TEST_F(Transactions, ACommittedIdStaysIssued)
{
    m_manager.BeginTransaction();
    NewNode();
    m_manager.DeleteNodeObject(1);
    m_manager.CommitTransaction();
    EXPECT_EQ(NewNode()->GetObjectId(), 2u);
}

TEST_F(Transactions, AnAbortBringsBackWhatWasDeletedAtItsPlace)
{
    for (int i = 0; i < 3; ++i)
        NewNode(L"7");
    m_manager.BeginTransaction();
    m_manager.DeleteNodeObject(2);
    NewNode();
    EXPECT_THAT(Nodes(), ElementsAre(1, 3, 4));
    m_manager.AbortTransaction();
    EXPECT_THAT(Nodes(), ElementsAre(1, 2, 3));
    EXPECT_EQ(OrderOf(2), L"7");
    EXPECT_EQ(NodeTable().RetiredCount(), 1u) << "the deleted object waits for the next commit";
    m_manager.BeginTransaction();
    m_manager.CommitTransaction();
    EXPECT_EQ(NodeTable().RetiredCount(), 0u);
}

TEST_F(Transactions, AnAbortUndoesDirectChangesThroughLivePointers)
{
    CSpan* const span = m_manager.CreateSpanNoarea(1, 2, 3, values({{L"spno", L"1"}}));
    const long id = span->GetId32();
    span->SetStatus(5);
    m_manager.BeginTransaction();
    span->WriteSubAttribute(L"spno", L"2");
    span->WriteSubAttribute(L"more", L"x");
    span->SetUpperNodeId(11);
    span->SetRouteId(13);
    span->SetStatus(6);
    span->SetObjectId(900);
    m_manager.AbortTransaction();
    const CSpan* const restored = m_manager.GetSpanObjectOriginal(id);
    ASSERT_NE(restored, nullptr);
    EXPECT_EQ(m_manager.GetSpanObjectOriginal(900), nullptr);
    EXPECT_EQ(restored->GetSubAttribute(L"spno"), L"1");
    EXPECT_FALSE(restored->IsSubAttribute(L"more"));
    EXPECT_THAT(restored->Links(), ElementsAre(1, 2, 3));
    EXPECT_EQ(restored->GetStatus(), 5);
}

TEST_F(Transactions, AnAbortUndoesEachKindOfWriting)
{
    const std::pair<const char*, void (*)(CNode&)> edits[] = {
        {"WriteSubAttributeInt", [](CNode& node) { node.WriteSubAttributeInt(L"order", 2); }},
        {"WriteSubAttributeDouble", [](CNode& node) { node.WriteSubAttributeDouble(L"order", 2); }},
        {"SetSubAttribute", [](CNode& node) { node.SetSubAttribute(CMapStringToString()); }},
        {"AddSubAttribute",
         [](CNode& node) {
             node.AddSubAttribute(values({{L"order", L"2"}}));
         }},
        {"SetAttributes", [](CNode& node) { node.SetAttributes(obmgr::Attributes()); }},
        {"SetAttribute", [](CNode& node) { node.SetAttribute(obmgr::InternKey("order"), "2"); }},
        {"assignment", [](CNode& node) { node = CNode(1); }},
    };
    NewNode(L"1");
    for (const auto& [name, edit] : edits) {
        m_manager.BeginTransaction();
        edit(*m_manager.GetNodeObjectOriginal(1));
        EXPECT_NE(OrderOf(1), L"1") << name;
        m_manager.AbortTransaction();
        EXPECT_EQ(OrderOf(1), L"1") << name;
    }
}

TEST_F(Transactions, AnAbortBringsTheMultiAreaAndTheDisposalTypeBack)
{
    CQrexperiment* const method = m_manager.CreateQrexperiment(values({}));
    CSection* const section = m_manager.CreateSection(2, values({}));
    const long methodId = method->GetId32();
    const long sectionId = section->GetId32();
    method->SetMultiArea(1.5);
    m_manager.BeginTransaction();
    method->SetMultiArea(2.5);
    section->SetDisposalType(4);
    m_manager.AbortTransaction();
    EXPECT_EQ(m_manager.GetQrexperimentObjectOriginal(methodId)->GetMultiArea(), 1.5);
    EXPECT_EQ(m_manager.GetSectionObjectOriginal(sectionId)->GetDisposalType(), 2);
}

TEST_F(Transactions, AnAbortBringsLoadedDimensionsBack)
{
    CPipe* const pipe = m_manager.CreatePipe(values({{L"pedia", L"1"}}));
    pipe->LoadSpec(false);
    pipe->WriteSubAttribute(L"pedia", L"2");
    m_manager.BeginTransaction();
    pipe->LoadSpec(false);
    EXPECT_EQ(pipe->GetSpec().diameterOrTopWidth, 2.0);
    m_manager.AbortTransaction();
    EXPECT_EQ(m_manager.GetPipeObjectOriginal(1)->GetSpec().diameterOrTopWidth, 1.0);
}

TEST_F(Transactions, AnAbortUndoesSetAndKeepsTheGivenObject)
{
    NewNode(L"1");
    CNode* const copy = m_manager.GetNodeObject(1);
    copy->WriteSubAttribute(L"order", L"2");
    m_manager.BeginTransaction();
    m_manager.SetNodeObjectData(copy);
    EXPECT_EQ(OrderOf(1), L"2");
    m_manager.AbortTransaction();
    EXPECT_EQ(OrderOf(1), L"1");
    EXPECT_EQ(copy->GetSubAttribute(L"order"), L"2") << "still readable";
    EXPECT_EQ(NodeTable().RetiredCount(), 1u);
}

TEST_F(Transactions, ACommitDestroysWhatWasRemovedOrHandedIn)
{
    NewNode();
    NewNode();
    m_manager.BeginTransaction();
    m_manager.SetNodeObjectData(m_manager.GetNodeObject(1));
    m_manager.DeleteNodeObject(2);
    EXPECT_EQ(NodeTable().RetiredCount(), 2u);
    m_manager.CommitTransaction();
    EXPECT_EQ(NodeTable().RetiredCount(), 0u);
}

TEST_F(Transactions, ARemovedObjectStaysReadableUntilTheNextCommit)
{
    CNode* const node = NewNode(L"42");
    ASSERT_TRUE(m_manager.DeleteNodeObject(1));
    EXPECT_EQ(m_manager.GetNodeObjectOriginal(1), nullptr);
    EXPECT_EQ(node->GetSubAttribute(L"order"), L"42");
    m_manager.BeginTransaction();
    EXPECT_EQ(node->GetSubAttribute(L"order"), L"42");
    m_manager.AbortTransaction();
    EXPECT_EQ(node->GetSubAttribute(L"order"), L"42");
    node->WriteSubAttribute(L"order", L"43");
    EXPECT_EQ(node->GetSubAttribute(L"order"), L"43");
}

TEST_F(Transactions, AnIdCanBeAddedAgainAfterItsObjectWasRemoved)
{
    NewNode(L"old");
    m_manager.BeginTransaction();
    m_manager.DeleteNodeObject(1);
    auto again = std::make_unique<CNode>(1);
    again->WriteSubAttribute(L"order", L"new");
    ASSERT_TRUE(m_manager.GetNodeDb().Add(1, again.get()));
    again.release();
    EXPECT_EQ(OrderOf(1), L"new");
    m_manager.AbortTransaction();
    EXPECT_EQ(OrderOf(1), L"old");
    EXPECT_THAT(Nodes(), ElementsAre(1));
}

TEST_F(Transactions, AnAbortBringsTheIdListBackAsItWas)
{
    CNode* const node = NewNode();
    node->SetObjectId(50); // the id list still says 1
    m_manager.BeginTransaction();
    m_manager.ResetObjectIdList();
    m_manager.AbortTransaction();
    CNode first(1);
    EXPECT_FALSE(m_manager.GetNodeDb().Add(1, &first)) << "the id list says 1 again";
    auto other = std::make_unique<CNode>(50);
    EXPECT_TRUE(m_manager.GetNodeDb().Add(50, other.get()));
    other.release();
}

TEST_F(Transactions, AnAbortBringsDuplicateIdsBack)
{
    NewNode(L"a");
    NewNode(L"b");
    NewNode(L"c");
    m_manager.GetNodeObjectOriginal(2)->SetObjectId(1);
    m_manager.GetNodeObjectOriginal(3)->SetObjectId(1);
    m_manager.BeginTransaction();
    ASSERT_TRUE(m_manager.GetNodeDb().Remove(m_manager.GetNodeObjectOriginal(1)));
    EXPECT_THAT(Nodes(), IsEmpty()) << "all objects with the id go";
    EXPECT_EQ(NodeTable().RetiredCount(), 3u);
    m_manager.AbortTransaction();
    EXPECT_THAT(Nodes(), ElementsAre(1, 1, 1));
    EXPECT_EQ(OrderOf(1), L"a");
}

TEST_F(Transactions, AClearedTableComesBackByAnAbort)
{
    NewNode(L"a");
    NewNode(L"b");
    m_manager.DeleteNodeObject(1);
    m_manager.BeginTransaction();
    NewNode();
    m_manager.GetNodeDb().Clear();
    EXPECT_THAT(Nodes(), IsEmpty());
    EXPECT_EQ(NodeTable().RetiredCount(), 0u);
    auto node = std::make_unique<CNode>(2);
    ASSERT_TRUE(m_manager.GetNodeDb().Add(2, node.get()));
    node.release();
    m_manager.AbortTransaction();
    EXPECT_THAT(Nodes(), ElementsAre(2));
    EXPECT_EQ(OrderOf(2), L"b");
}

TEST_F(Transactions, AClearedTableStaysClearedByACommit)
{
    NewNode();
    m_manager.BeginTransaction();
    m_manager.GetNodeDb().Clear();
    m_manager.CommitTransaction();
    EXPECT_THAT(Nodes(), IsEmpty());
    EXPECT_EQ(NodeTable().SavedCount(), 0u);
}

TEST_F(Transactions, InitializeInsideATransactionLeavesTheCommitToFinish)
{
    NewNode();
    m_manager.BeginTransaction();
    m_manager.Initialize();
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 0);
    m_manager.CommitTransaction();
    EXPECT_EQ(m_manager.GetAllDataCount(), 0);
    EXPECT_EQ(NodeTable().TransactionCount(), 0u);
    NewNode();
    m_manager.BeginTransaction();
    NewNode();
    m_manager.AbortTransaction();
    EXPECT_THAT(Nodes(), ElementsAre(1));
}

TEST_F(Transactions, InitializeInsideATransactionMakesTheAbortAnError)
{
    NewNode();
    m_manager.BeginTransaction();
    m_manager.Initialize();
    EXPECT_THROW(m_manager.AbortTransaction(), CInvalidArgException);
    EXPECT_EQ(m_manager.GetAllDataCount(), 0);
    EXPECT_EQ(NewNode()->GetObjectId(), 1u) << "the design can be used";
    EXPECT_EQ(NodeTable().TransactionCount(), 1u) << "the tables never got their end";
}

TEST_F(Transactions, AnEndWithoutABeginPutsTheCountOutOfStep)
{
    for (const auto end : {&CObjectManager::CommitTransaction, &CObjectManager::AbortTransaction}) {
        CObjectManager manager;
        const support::Values none;
        (manager.*end)(); // the count wraps: nothing is done
        manager.CreateNode(none);
        manager.BeginTransaction(); // the count is 0 again: no snapshot
        EXPECT_EQ(manager.GetNodeDb().Untyped().TransactionCount(), 0u);
        manager.CreateNode(none);
        manager.AbortTransaction(); // wraps again
        EXPECT_EQ(manager.GetAllDataCount(), 2);
        manager.BeginTransaction();
        manager.BeginTransaction(); // in step
        EXPECT_EQ(manager.GetNodeDb().Untyped().TransactionCount(), 1u);
        manager.CreateNode(none);
        manager.AbortTransaction();
        EXPECT_EQ(manager.GetAllDataCount(), 2);
    }
}

TEST_F(Transactions, AMillionNestedBeginsAreOneTransaction)
{
    NewNode();
    for (int i = 0; i < 1'000'000; ++i)
        m_manager.BeginTransaction();
    NewNode();
    for (int i = 0; i < 999'999; ++i)
        m_manager.CommitTransaction();
    EXPECT_EQ(NodeTable().TransactionCount(), 1u);
    m_manager.AbortTransaction();
    EXPECT_THAT(Nodes(), ElementsAre(1));
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 1);
}

TEST_F(Transactions, EveryTableTakesPart)
{
    m_manager.BeginTransaction();
    for (const auto type : obmgr::CanonicalOrder())
        EXPECT_EQ(m_manager.TableOf(type).TransactionCount(), 1u);
    m_manager.CommitTransaction();
    for (const auto type : obmgr::CanonicalOrder())
        EXPECT_EQ(m_manager.TableOf(type).TransactionCount(), 0u);
}

TEST_F(Transactions, ADeletedAndAbortedDesignWorksOn)
{
    for (int i = 0; i < 500; ++i)
        NewNode();
    for (int round = 0; round < 3; ++round) {
        m_manager.BeginTransaction();
        for (int i = 1; i <= 500; ++i)
            m_manager.DeleteNodeObject(i);
        EXPECT_EQ(m_manager.GetAllDataCount(), 0);
        m_manager.AbortTransaction();
        ASSERT_EQ(Nodes().size(), 500u);
        EXPECT_NE(m_manager.GetNodeObjectOriginal(250), nullptr);
    }
    EXPECT_EQ(NodeTable().RetiredCount(), 1500u);
}

TEST_F(Transactions, VerifyingDoesNothing)
{
    NewNode();
    m_manager.VerifyTransaction();
    m_manager.BeginTransaction();
    m_manager.VerifyTransaction();
    m_manager.AbortTransaction();
    EXPECT_THAT(Nodes(), ElementsAre(1));
}

TEST_F(Transactions, AManagerMayEndInsideATransaction)
{
    support::OpenManager manager;
    manager.CreateNode(values({}));
    manager.BeginTransaction();
    manager.DeleteNodeObject(1);
    manager.CreateNode(values({}));
}

} // namespace
