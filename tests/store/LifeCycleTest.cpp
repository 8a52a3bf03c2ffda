// The manager as a whole: ids, the list of everything, recording of reads, start over.

#include "framework/Exception.h"
#include "support/FamilyTable.h"

#include <gmock/gmock.h>

#include <memory>

namespace {

using support::OpenManager;
using support::values;
using testing::ElementsAre;
using testing::IsEmpty;
using ObjectList = CTypedPtrList<CObList, CPipeObject*>;

std::vector<CPipeObject*> toVector(const ObjectList& list)
{
    std::vector<CPipeObject*> objects;
    for (CPipeObject* object : list)
        objects.push_back(object);
    return objects;
}

class LifeCycle : public testing::Test {
protected:
    support::DefaultsForAllTags m_defaults;
    OpenManager m_manager;
};

TEST_F(LifeCycle, AFreshManagerIsEmpty)
{
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 0);
    EXPECT_EQ(m_manager.GetNextObjectId(), 1);
    EXPECT_EQ(m_manager.GetMaxObjectId(), 0);
    EXPECT_EQ(m_manager.GetAllDataCount(), 0);
    EXPECT_FALSE(m_manager.IsSaveReadObject());
    EXPECT_EQ(m_manager.GetRegKey(), L"");
    EXPECT_EQ(m_manager.GetCurrentFilePath(), L"");
}

TEST_F(LifeCycle, AManagerIsMadeByItsRunTimeClass)
{
    const std::unique_ptr<CObject> made(CObjectManager::GetThisClass()->CreateObject());
    ASSERT_NE(dynamic_cast<CObjectManager*>(made.get()), nullptr);
    EXPECT_TRUE(made->IsKindOf(CDocument::GetThisClass()));
    EXPECT_STREQ(made->GetRuntimeClass()->m_lpszClassName, "CObjectManager");
    const std::unique_ptr<CObject> other(CObjectManager::CreateObject());
    EXPECT_NE(dynamic_cast<CObjectManager*>(other.get()), nullptr);
}

TEST_F(LifeCycle, AskingForTheNextIdIssuesNothing)
{
    EXPECT_EQ(m_manager.GetNextObjectId(), 1);
    EXPECT_EQ(m_manager.GetNextObjectId(), 1);
    EXPECT_EQ(m_manager.IssueObjectId(), 1);
    EXPECT_EQ(m_manager.GetNextObjectId(), 2);
}

TEST_F(LifeCycle, IdsWrapAsThirtyTwoBitNumbers)
{
    m_manager.SetObjectId(2147483647);
    EXPECT_EQ(m_manager.GetNextObjectId(), -2147483648L);
    EXPECT_EQ(m_manager.IssueObjectId(), -2147483648L);
    m_manager.SetObjectId(0x1'0000'0007L);
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 7);
}

TEST_F(LifeCycle, AllTypesDrawFromOneCounter)
{
    EXPECT_EQ(m_manager.CreateNode(values({}))->GetObjectId(), 1u);
    EXPECT_EQ(m_manager.CreatePipe(values({}))->GetObjectId(), 2u);
    EXPECT_EQ(m_manager.CreateNode(values({}))->GetObjectId(), 3u);
}

TEST_F(LifeCycle, DeletingTheHighestIdLowersTheMaximumAndNotTheCounter)
{
    m_manager.CreateNode(values({}));
    m_manager.CreatePipe(values({}));
    EXPECT_EQ(m_manager.GetMaxObjectId(), 2);
    m_manager.DeletePipeObject(2);
    EXPECT_EQ(m_manager.GetMaxObjectId(), 1);
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 2);
}

TEST_F(LifeCycle, TheMaximumIsNeverNegative)
{
    m_manager.CreateNode(values({}))->SetObjectId(0xFFFFFFF0ul);
    EXPECT_EQ(m_manager.GetMaxObjectId(), 0);
}

TEST_F(LifeCycle, ResettingTheIdListsOfAnEmptyDesignDoesNothing)
{
    m_manager.ResetObjectIdList();
    EXPECT_EQ(m_manager.GetAllDataCount(), 0);
}

TEST_F(LifeCycle, ResettingTheIdListsLetsAddFollowTheObjects)
{
    m_manager.CreateNode(values({}))->SetObjectId(10);
    m_manager.SetObjectId(0);
    EXPECT_EQ(m_manager.CreateNode(values({})), nullptr) << "the id list still has the 1";
    m_manager.ResetObjectIdList();
    m_manager.SetObjectId(0);
    EXPECT_NE(m_manager.CreateNode(values({})), nullptr);
    m_manager.SetObjectId(9);
    EXPECT_EQ(m_manager.CreateNode(values({})), nullptr);
}

TEST_F(LifeCycle, TheListOfEverythingGoesInCanonicalOrderBehindWhatItHeld)
{
    std::vector<CPipeObject*> expected;
    ObjectList objects;
    CNode other(1);
    objects.AddTail(&other);
    expected.push_back(&other);
    long id = 0;
    // Filled against the order, two of each type.
    const auto order = obmgr::CanonicalOrder();
    for (auto type = order.rbegin(); type != order.rend(); ++type) {
        for (int i = 0; i < 2; ++i) {
            const support::Family& family = support::families()[static_cast<std::size_t>(*type)];
            auto* const object = static_cast<CPipeObject*>(family.make());
            object->SetObjectId(static_cast<unsigned long>(++id));
            ASSERT_TRUE(m_manager.TableOf(*type).Add(id, object));
        }
    }
    for (const auto type : order)
        m_manager.TableOf(type).ForEach([&](CPipeObject& object) { expected.push_back(&object); });
    m_manager.GetAllObject(objects);
    EXPECT_EQ(toVector(objects), expected);
    EXPECT_EQ(m_manager.GetAllDataCount(), 186);
    EXPECT_EQ(m_manager.GetMaxObjectId(), 186);
}

TEST_F(LifeCycle, OnlyLiveObjectsAreCounted)
{
    m_manager.CreateNode(values({}));
    m_manager.CreateNode(values({}));
    m_manager.BeginTransaction();
    m_manager.GetNodeObjectOriginal(1)->SetStatus(1);
    m_manager.DeleteNodeObject(2);
    EXPECT_EQ(m_manager.GetAllDataCount(), 1);
}

TEST_F(LifeCycle, ReadsAreRecordedOnlyWhileRecordingIsOn)
{
    CNode first(1);
    CNode second(2);
    ObjectList recorded;
    m_manager.SaveReadObject(&first);
    m_manager.GetSaveReadObject(recorded);
    EXPECT_THAT(toVector(recorded), IsEmpty());
    m_manager.SetSaveReadObject(true);
    m_manager.SaveReadObject(&first);
    m_manager.SaveReadObject(&second);
    m_manager.SetSaveReadObject(false);
    m_manager.SaveReadObject(&first);
    m_manager.GetSaveReadObject(recorded);
    m_manager.GetSaveReadObject(recorded);
    EXPECT_THAT(toVector(recorded), ElementsAre(&first, &second, &first, &second)) << "the list is kept and appended";
}

TEST_F(LifeCycle, InitializeEmptiesTheDesignAndTheRecording)
{
    m_manager.SetSaveReadObject(true);
    m_manager.SaveReadObject(m_manager.CreateNode(values({})));
    m_manager.CreatePipe(values({}));
    m_manager.DeletePipeObject(2);
    m_manager.SetRegKey(L"key");
    m_manager.GetFileProfile()->SetAppName(L"app");
    m_manager.Initialize();
    ObjectList recorded;
    m_manager.GetSaveReadObject(recorded);
    EXPECT_THAT(toVector(recorded), IsEmpty());
    EXPECT_EQ(m_manager.GetAllDataCount(), 0);
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 0);
    EXPECT_EQ(m_manager.GetPipeDb().Untyped().RetiredCount(), 0u);
    EXPECT_TRUE(m_manager.IsSaveReadObject());
    EXPECT_EQ(m_manager.GetRegKey(), L"key");
    EXPECT_EQ(m_manager.GetFileProfile()->GetAppName(), L"app");
    EXPECT_EQ(m_manager.CreateNode(values({}))->GetObjectId(), 1u);
}

TEST_F(LifeCycle, TheProfileIsAssignedOver)
{
    CFileProfile profile;
    profile.SetMaxObjectId(12);
    profile.SetVersion(L"2.0");
    const CFileProfile* const own = m_manager.GetFileProfile();
    m_manager.SetProfileObject(profile);
    EXPECT_EQ(m_manager.GetFileProfile(), own);
    EXPECT_EQ(own->GetMaxObjectId(), 12);
    EXPECT_EQ(m_manager.GetProfileObject().GetVersion(), L"2.0");
}

TEST_F(LifeCycle, DistanceIsMeasuredInSpace)
{
    EXPECT_EQ(m_manager.GetDistancePtPt(1, 2, 3, 3, 5, 9), 7.0);
    EXPECT_EQ(m_manager.GetDistancePtPt(1, 2, 3, 1, 2, 3), 0.0);
}

TEST_F(LifeCycle, AnIdIsLookedForOnAList)
{
    CList<long, long> ids;
    EXPECT_FALSE(m_manager.IsIdContain(1, ids));
    ids.AddTail(2);
    ids.AddTail(1);
    EXPECT_TRUE(m_manager.IsIdContain(1, ids));
    EXPECT_FALSE(m_manager.IsIdContain(3, ids));
}

} // namespace
