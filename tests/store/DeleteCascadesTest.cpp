// Deletes that take other records along.

#include "support/Store.h"

#include <gmock/gmock.h>

namespace {

using support::idsOf;
using support::values;
using support::Values;
using testing::ElementsAre;
using testing::IsEmpty;

class DeleteCascades : public testing::Test {
protected:
    template <class T> static std::vector<long> Ids(const CObjectDataBase<T>& table)
    {
        std::vector<long> ids;
        for (const T* object : table)
            ids.push_back(object->GetId32());
        return ids;
    }

    support::DefaultsForAllTags m_defaults;
    support::OpenManager m_manager;
    const Values m_none{};
};

TEST_F(DeleteCascades, ANodeTakesItsUnitsAndInterceptorsAlong)
{
    const long node = m_manager.CreateNode(m_none)->GetId32();
    const long other = m_manager.CreateNode(m_none)->GetId32();
    for (const long owner : {node, other, node}) {
        m_manager.CreateNodeunit(owner, m_none);
        m_manager.CreateIcpInq(owner, m_none);
    }
    EXPECT_TRUE(m_manager.DeleteNodeObject(node));
    EXPECT_THAT(Ids(m_manager.GetNodeDb()), ElementsAre(other));
    EXPECT_THAT(Ids(m_manager.GetNodeunitDb()), ElementsAre(5));
    EXPECT_THAT(Ids(m_manager.GetIcpInqDb()), ElementsAre(6));
    EXPECT_FALSE(m_manager.DeleteNodeObject(node));
    EXPECT_TRUE(m_manager.DeleteNodeObject(other));
    EXPECT_EQ(m_manager.GetAllDataCount(), 0);
}

TEST_F(DeleteCascades, AnUnknownNodeStillLosesItsInterceptors)
{
    m_manager.CreateIcpInq(55, m_none);
    EXPECT_FALSE(m_manager.DeleteNodeObject(55));
    EXPECT_TRUE(m_manager.GetIcpInqDb().IsEmpty());
    EXPECT_TRUE(m_manager.DeleteIcpInqByNode(55)) << "none to delete is no failure";
}

TEST_F(DeleteCascades, AnInflowTakesItsAreaRecordsAlong)
{
    const long in = m_manager.CreateAreaInq(1, m_none)->GetId32();
    const long out = m_manager.CreateAreaOutq(1, m_none)->GetId32();
    m_manager.CreateInareaset(in, m_none);
    m_manager.CreateInareaset(out, m_none);
    m_manager.CreateOutareaset(out, m_none);
    EXPECT_TRUE(m_manager.DeleteAreaInqObject(in));
    EXPECT_THAT(Ids(m_manager.GetInareasetDb()), ElementsAre(4));
    EXPECT_TRUE(m_manager.DeleteAreaOutqObject(out));
    EXPECT_TRUE(m_manager.GetOutareasetDb().IsEmpty());
    EXPECT_EQ(m_manager.GetAllDataCount(), 1);
}

TEST_F(DeleteCascades, AnUnknownInflowDeletesNothing)
{
    m_manager.CreateInareaset(9, m_none);
    m_manager.CreateOutareaset(9, m_none);
    EXPECT_FALSE(m_manager.DeleteAreaInqObject(9));
    EXPECT_FALSE(m_manager.DeleteAreaOutqObject(9));
    EXPECT_EQ(m_manager.GetAllDataCount(), 2);
}

TEST_F(DeleteCascades, RecordsOfAnOwnerAreDeletedTogether)
{
    for (const long owner : {1L, 2L, 1L}) {
        m_manager.CreateAreaSet(owner, m_none);
        m_manager.CreateAreatset(owner, m_none);
        m_manager.CreateInareaset(owner, m_none);
        m_manager.CreateOutareaset(owner, m_none);
        m_manager.CreateGeometry(owner, m_none);
    }
    EXPECT_TRUE(m_manager.DeleteSpanAreaset(1));
    EXPECT_TRUE(m_manager.DeleteSpanAreatset(1));
    EXPECT_TRUE(m_manager.DeleteAreaInqInareaset(1));
    EXPECT_TRUE(m_manager.DeleteAreaOutqOutareaset(1));
    EXPECT_TRUE(m_manager.DeleteGeometryObject(1));
    EXPECT_EQ(m_manager.GetAllDataCount(), 5);
    EXPECT_FALSE(m_manager.DeleteSpanAreaset(1));
    EXPECT_FALSE(m_manager.DeleteSpanAreatset(1));
    EXPECT_FALSE(m_manager.DeleteAreaInqInareaset(1));
    EXPECT_FALSE(m_manager.DeleteAreaOutqOutareaset(1));
    EXPECT_FALSE(m_manager.DeleteGeometryObject(1));
    EXPECT_TRUE(m_manager.DeleteAreatset(1)) << "always true";
    EXPECT_TRUE(m_manager.DeleteAreatset(2));
    EXPECT_TRUE(m_manager.GetAreatsetDb().IsEmpty());
}

TEST_F(DeleteCascades, AGeometryIsDeletedByItsOwnIdOrByItsOwner)
{
    const long first = m_manager.CreateGeometry(2, m_none)->GetId32(); // owned by 2, which is the other's id
    const long second = m_manager.CreateGeometry(7, m_none)->GetId32();
    EXPECT_TRUE(m_manager.DeleteGeometryObject(second));
    EXPECT_THAT(Ids(m_manager.GetGeometryDb()), ElementsAre(second));
    EXPECT_FALSE(m_manager.DeleteGeometrySelfObject(first));
    EXPECT_TRUE(m_manager.DeleteGeometrySelfObject(second));
}

TEST_F(DeleteCascades, SpanRecordsAreDeletedByTheirKey)
{
    m_manager.CreateSpdxfin(1, values({{L"sdispanid", L"7"}}));
    m_manager.CreateSpdxfin(7, values({{L"sdispanid", L"1"}}));
    m_manager.CreateDrawbelttx(1, values({{L"dbtspanid", L"7"}}));
    m_manager.CreateDrawbelttx(7, values({{L"dbtspanid", L"1"}}));
    EXPECT_TRUE(m_manager.DeleteSpanSpdxfin(7));
    EXPECT_TRUE(m_manager.DeleteSpanDrawbelttx(7));
    EXPECT_THAT(Ids(m_manager.GetSpdxfinDb()), ElementsAre(2));
    EXPECT_THAT(Ids(m_manager.GetDrawbelttxDb()), ElementsAre(4));
    EXPECT_TRUE(m_manager.DeleteSpanSpdxfin(7)) << "none to delete is no failure";
}

TEST_F(DeleteCascades, AStormMethodDeletesTheVelocitiesThatCarryTheOtherKey)
{
    const struct {
        long id;
        bool (CObjectManager::*remove)(long);
    } methods[] = {
        {m_manager.CreateQrrational(values({{L"qrname", L"a"}}))->GetId32(), &CObjectManager::DeleteQrrationalObject},
        {m_manager.CreateQrexperiment(values({{L"qename", L"b"}}))->GetId32(),
         &CObjectManager::DeleteQrexperimentObject},
        {m_manager.CreateQrline(values({{L"qlname", L"c"}}))->GetId32(), &CObjectManager::DeleteQrlineObject},
        {m_manager.CreateQrriver(values({{L"qvname", L"d"}}))->GetId32(), &CObjectManager::DeleteQrriverObject},
    };
    for (const wchar_t* name : {L"a", L"b", L"c", L"d"}) {
        m_manager.CreateAreasupve(values({{L"avqrname", name}}));
        m_manager.CreateAreasupve(values({{L"avqrname", name}, {L"qtqrname", name}}));
    }
    int left = 8;
    for (const auto& method : methods) {
        EXPECT_TRUE((m_manager.*method.remove)(method.id));
        EXPECT_EQ(m_manager.GetAreasupveDb().GetCount(), --left);
        EXPECT_FALSE((m_manager.*method.remove)(method.id));
        EXPECT_EQ(m_manager.GetAreasupveDb().GetCount(), left) << "an unknown method deletes nothing";
    }
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetAreasupveIdList(L"b", ids); }).size(), 1u);
}

TEST_F(DeleteCascades, AMethodWithoutNameDeletesTheVelocitiesWithoutTheOtherKey)
{
    const long method = m_manager.CreateQrline(m_none)->GetId32();
    m_manager.CreateAreasupve(values({{L"avqrname", L"x"}}));
    const long kept = m_manager.CreateAreasupve(values({{L"qtqrname", L"x"}}))->GetId32();
    EXPECT_TRUE(m_manager.DeleteQrlineObject(method));
    EXPECT_THAT(Ids(m_manager.GetAreasupveDb()), ElementsAre(kept));
}

TEST_F(DeleteCascades, ACombinedMethodTakesItsPartsAndTimesAlong)
{
    const long method = m_manager.CreateQrmulti(values({{L"qmname", L"m"}}))->GetId32();
    m_manager.CreateQrmultidat(values({{L"qmdqrmultiname", L"m"}}));
    m_manager.CreateQrmultidat(values({{L"qmdqrmultiname", L"n"}}));
    m_manager.CreateQrmultidat(values({{L"qmdqrmultiname", L"m"}}));
    m_manager.CreateQrrivertime(values({{L"qtqrname", L"m"}}));
    m_manager.CreateQrrivertime(values({{L"qtqrname", L"n"}}));
    EXPECT_TRUE(m_manager.DeleteQrmultiObject(method));
    EXPECT_THAT(Ids(m_manager.GetQrmultidatDb()), ElementsAre(3));
    EXPECT_THAT(Ids(m_manager.GetQrrivertimeDb()), ElementsAre(6));
    EXPECT_FALSE(m_manager.DeleteQrmultiObject(method));
}

TEST_F(DeleteCascades, AWorkAreaTakesItsDivisionsAndTransportsAlong)
{
    const long exec = m_manager.CreateExec(m_none)->GetId32();
    m_manager.CreateExecdivide(exec, m_none);
    m_manager.CreateExecdivide(99, m_none);
    m_manager.CreateLcarry(exec, m_none);
    EXPECT_TRUE(m_manager.DeleteExecObject(exec));
    EXPECT_THAT(Ids(m_manager.GetExecdivideDb()), ElementsAre(3));
    EXPECT_TRUE(m_manager.GetLcarryDb().IsEmpty());
    EXPECT_FALSE(m_manager.DeleteExecObject(99));
    EXPECT_THAT(Ids(m_manager.GetExecdivideDb()), ElementsAre(3));
}

TEST_F(DeleteCascades, ManyRecordsOfANameGoInOneWalk)
{
    for (int i = 0; i < 300; ++i)
        m_manager.CreateQrmultidat(values({{L"qmdqrmultiname", i % 10 == 0 ? L"kept" : L"gone"}}));
    m_manager.DeleteQrmultidatObject(L"gone");
    EXPECT_EQ(m_manager.GetQrmultidatDb().GetCount(), 30);
}

} // namespace
