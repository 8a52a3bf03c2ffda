// Family members with a shape of their own: projects, crossing points, lists by a key, pens by type.

#include "support/Store.h"

#include <gmock/gmock.h>

#include <memory>

namespace {

using support::idsOf;
using support::values;
using testing::ElementsAre;
using testing::IsEmpty;

class SpecialFamilies : public testing::Test {
protected:
    support::DefaultsForAllTags m_defaults;
    support::OpenManager m_manager;
};

TEST_F(SpecialFamilies, TheFirstProjectCounts)
{
    long id = -1;
    EXPECT_FALSE(m_manager.GetProjectId(id));
    EXPECT_EQ(id, -1);
    EXPECT_EQ(m_manager.GetProjectObjectOriginal(), nullptr);
    CProject* const first = m_manager.CreateProject(values({}));
    m_manager.CreateProject(values({}));
    EXPECT_TRUE(m_manager.GetProjectId(id));
    EXPECT_EQ(id, 1);
    EXPECT_EQ(m_manager.GetProjectObjectOriginal(), first);
    EXPECT_EQ(m_manager.GetProjectObjectOriginal(2)->GetId32(), 2);
    EXPECT_EQ(std::unique_ptr<CProject>(m_manager.GetProjectObject(2))->GetId32(), 2);
    EXPECT_EQ(m_manager.GetProjectObject(3), nullptr);
    m_manager.GetProjectDb().Remove(first);
    EXPECT_TRUE(m_manager.GetProjectId(id));
    EXPECT_EQ(id, 2);
}

TEST_F(SpecialFamilies, ACrossingPointBelongsToEitherOfItsObjectsOnce)
{
    m_manager.CreateIntPos(10, 20, values({}));
    m_manager.CreateIntPos(30, 10, values({}));
    m_manager.CreateIntPos(20, 30, values({}));
    m_manager.CreateIntPos(10, 10, values({}));
    m_manager.CreateIntPos(10, 40, values({}));
    const auto of = [&](long id) { return idsOf([&](auto& ids) { return m_manager.GetIntPosIdList(id, ids); }); };
    EXPECT_THAT(of(10), ElementsAre(1, 2, 4, 5));
    EXPECT_THAT(of(20), ElementsAre(1, 3));
    EXPECT_THAT(of(50), IsEmpty());
}

TEST_F(SpecialFamilies, RoutesOfAWebAndSpansOfARouteAreListedInTableOrder)
{
    m_manager.CreateRoute(50, 0, values({}));
    m_manager.CreateRoute(51, 0, values({}));
    m_manager.CreateRoute(50, 1, values({}));
    m_manager.CreateSpanNoarea(10, 11, 3, values({}));
    m_manager.CreateSpanNoarea(11, 12, 1, values({}));
    m_manager.CreateSpanNoarea(12, 13, 3, values({}));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetRouteIdList(50, ids); }), ElementsAre(1, 3));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetRouteIdList(60, ids); }), IsEmpty());
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetSpanIdList(3, ids); }), ElementsAre(4, 6));
    m_manager.GetSpanObjectOriginal(6)->SetRouteId(1);
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetSpanIdList(3, ids); }), ElementsAre(4));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetSpanIdList(1, ids); }), ElementsAre(5, 6));
}

TEST_F(SpecialFamilies, AListThatHeldSomethingBeforeCountsAsFoundUnlessTheTableIsEmpty)
{
    CList<long, long> ids;
    ids.AddTail(99);
    EXPECT_FALSE(m_manager.GetRouteIdList(50, ids));
    EXPECT_FALSE(m_manager.GetSpanIdList(3, ids));
    m_manager.CreateRoute(50, 0, values({}));
    m_manager.CreateSpanNoarea(10, 11, 3, values({}));
    EXPECT_TRUE(m_manager.GetRouteIdList(60, ids));
    EXPECT_TRUE(m_manager.GetSpanIdList(60, ids));
    EXPECT_EQ(ids.GetCount(), 1);
}

TEST_F(SpecialFamilies, SpanRecordsAreListedByTheKeyAndNotByTheOwner)
{
    m_manager.CreateSpdxfin(1, values({{L"sdispanid", L"7"}}));
    m_manager.CreateSpdxfin(7, values({{L"sdispanid", L"8"}}));
    m_manager.CreateDrawbelttx(1, values({{L"dbtspanid", L"7"}}));
    m_manager.CreateDrawbelttx(7, values({{L"dbtspanid", L"8"}}));
    m_manager.CreateSecvalve(values({{L"svspid", L"7"}}));
    m_manager.CreateSecvalve(values({{L"svspid", L" 7 m"}}));
    m_manager.CreateOhaul(values({{L"ohspid", L"7"}}));
    m_manager.CreateOhaul(values({}));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetSpdxfinIdList(7, ids); }), ElementsAre(1));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetDrawbelttxIdList(7, ids); }), ElementsAre(3));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetSecvalveIdList(7, ids); }), ElementsAre(5, 6));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetOhaulIdList(7, ids); }), ElementsAre(7));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetOhaulIdList(0, ids); }), ElementsAre(8))
        << "an absent key reads as 0";
}

TEST_F(SpecialFamilies, MethodRecordsAreListedByName)
{
    m_manager.CreateQrmultidat(values({{L"qmdqrmultiname", L"m"}}));
    m_manager.CreateQrmultidat(values({{L"qmdqrmultiname", L"M"}}));
    m_manager.CreateAreasupve(values({{L"avqrname", L"m"}}));
    m_manager.CreateAreasupve(values({{L"qtqrname", L"m"}}));
    m_manager.CreateQrrivertime(values({{L"qtqrname", L"m"}}));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetQrmultidatIdList(L"m", ids); }), ElementsAre(1));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetAreasupveIdList(L"m", ids); }), ElementsAre(3));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetAreasupveIdList(L"", ids); }), ElementsAre(4));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetQrrivertimeIdList(L"m", ids); }), ElementsAre(5));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetQrrivertimeIdList(L"x", ids); }), IsEmpty());
}

TEST_F(SpecialFamilies, LayoutsOfAllRangesAreListed)
{
    CTypedPtrList<CObList, CProfilelayout*> layouts;
    EXPECT_FALSE(m_manager.GetProfilelayoutObjectAll(layouts));
    m_manager.CreateProfilelayout(1, values({}));
    m_manager.CreateProfilelayout(2, values({}));
    EXPECT_TRUE(m_manager.GetProfilelayoutObjectAll(layouts));
    EXPECT_EQ(layouts.GetCount(), 2);
}

TEST_F(SpecialFamilies, PipesOfASectionAreFoundByItsKeyword)
{
    const long section = m_manager.CreateSection(0, values({{L"sekeyword", L"VU"}}))->GetId32();
    const long egg = m_manager.CreateEgg(values({{L"egsectionkey", L"VU"}}))->GetId32();
    const long pipe = m_manager.CreatePipe(values({{L"pesectionkey", L"VU"}}))->GetId32();
    m_manager.CreatePipe(values({{L"pesectionkey", L"HP"}}));
    int type = -1;
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetPipeIdListOfSection(section, type, ids); }),
                ElementsAre(pipe, egg));
    EXPECT_EQ(type, 4);
    type = -1;
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetPipeIdListOfSection(99, type, ids); }), IsEmpty());
    EXPECT_EQ(type, -1);
}

TEST_F(SpecialFamilies, RangesOfASectionGroupAreFoundByItsName)
{
    const long group = m_manager.CreateSectGroup(values({{L"sgname", L"g"}}))->GetId32();
    const long range = m_manager.CreateSectGroupRec(values({{L"srsecgroupname", L"g"}}))->GetId32();
    m_manager.CreateSectGroupRec(values({{L"srsecgroupname", L"h"}}));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetSectGroupRecIdListOfSectGroup(group, ids); }),
                ElementsAre(range));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetSectGroupRecIdListOfSectGroup(range, ids); }), IsEmpty());
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetSecgrouprecIdList(L"g", ids); }), ElementsAre(range));
}

TEST_F(SpecialFamilies, APenOfATypeGetsTypeAndOrder)
{
    CMapStringToString given;
    given.SetAt(L"order", L"x");
    const unsigned long id = m_manager.CreateDrawpendat(static_cast<CDrawpendat::TYPE>(17), given);
    const CDrawpendat* const pen = m_manager.GetDrawpendatObjectOriginal(static_cast<long>(id));
    ASSERT_NE(pen, nullptr);
    EXPECT_EQ(pen->GetSubAttribute(L"dpdtype"), L"17");
    EXPECT_EQ(pen->GetSubAttributeInt(L"order", -1), CDrawpendat::GetPentypeOrder(17));
    CString written;
    EXPECT_TRUE(given.Lookup(L"dpdtype", written)) << "the caller's map is written";
    EXPECT_EQ(written, L"17");
}

TEST_F(SpecialFamilies, ARangeOfPensGivesOneForEachType)
{
    CMapStringToString given;
    CMap<int, int, int, int> ids;
    EXPECT_TRUE(
        m_manager.CreateDrawpendat(static_cast<CDrawpendat::TYPE>(3), static_cast<CDrawpendat::TYPE>(5), given, ids));
    ASSERT_EQ(ids.GetCount(), 3);
    for (int type = 3; type <= 5; ++type) {
        int id = 0;
        ASSERT_TRUE(ids.Lookup(type, id));
        EXPECT_EQ(id, type - 2);
        EXPECT_EQ(m_manager.GetDrawpendatObjectOriginal(id)->GetSubAttributeInt(L"dpdtype", 0), type);
    }
}

TEST_F(SpecialFamilies, AnEmptyRangeOfPensIssuesNoId)
{
    CMapStringToString given;
    CMap<int, int, int, int> ids;
    EXPECT_FALSE(
        m_manager.CreateDrawpendat(static_cast<CDrawpendat::TYPE>(5), static_cast<CDrawpendat::TYPE>(4), given, ids));
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 0);
    EXPECT_TRUE(ids.IsEmpty());
    EXPECT_TRUE(given.IsEmpty());
}

TEST_F(SpecialFamilies, PensThatCannotBeMadeAreNotedAsZero)
{
    CMapStringToString given;
    CMap<int, int, int, int> ids;
    m_manager.SetObjectId(2147483545);
    EXPECT_TRUE(
        m_manager.CreateDrawpendat(static_cast<CDrawpendat::TYPE>(1), static_cast<CDrawpendat::TYPE>(2), given, ids));
    EXPECT_EQ(ids[1], 2147483546);
    EXPECT_EQ(ids[2], 0);
    EXPECT_FALSE(
        m_manager.CreateDrawpendat(static_cast<CDrawpendat::TYPE>(1), static_cast<CDrawpendat::TYPE>(2), given, ids));
}

// ---- webs and spans ----

TEST_F(SpecialFamilies, AWebComesWithItsThreeDigitSettings)
{
    long id = 0;
    ASSERT_TRUE(m_manager.CreateWeb(2, values({{L"webname", L"w"}}), &id));
    EXPECT_EQ(id, 1);
    EXPECT_EQ(m_manager.GetWebObjectOriginal(1)->GetDisposalType(), 2);
    EXPECT_EQ(m_manager.GetWebObjectOriginal(1)->GetSubAttribute(L"webname"), L"w");
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetCalcfigIdList(1, ids); }), ElementsAre(2));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetDrawfigIdList(1, ids); }), ElementsAre(3));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetSheetfigIdList(1, ids); }), ElementsAre(4));
    EXPECT_NE(m_manager.CreateWeb(0, values({})), nullptr);
    EXPECT_TRUE(m_manager.CreateWeb(0, values({}), nullptr));
    EXPECT_EQ(m_manager.GetAllDataCount(), 12);
}

TEST_F(SpecialFamilies, AWebWhoseSettingsCannotBeMadeFailsWithoutTellingItsId)
{
    auto* const table = new CObDefManager;
    table->GetDefList().AddTail(new CObDefault(objectdata::Web, L"web"));
    table->GetDefList().AddTail(new CObDefault(objectdata::Calcfig, L"calcfig"));
    CObjectManager::ReSetDefManager(table);
    long id = -1;
    EXPECT_FALSE(m_manager.CreateWeb(0, values({}), &id));
    EXPECT_EQ(id, -1);
    EXPECT_EQ(m_manager.GetCurrentObjectId(), 3) << "it ends at the first that fails";
    EXPECT_EQ(m_manager.GetAllDataCount(), 3);
    EXPECT_EQ(m_manager.CreateWeb(0, values({})), nullptr);
}

TEST_F(SpecialFamilies, ASpanComesWithItsAreaRecord)
{
    long id = 0;
    ASSERT_TRUE(m_manager.CreateSpan(11, 12, 13, values({{L"spno", L"1"}}), &id));
    EXPECT_THAT(m_manager.GetSpanObjectOriginal(id)->Links(), ElementsAre(11, 12, 13));
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetAreaSetIdList(id, ids); }), ElementsAre(2));
    EXPECT_NE(m_manager.CreateSpan(1, 2, 3, values({})), nullptr);
    EXPECT_EQ(m_manager.GetAllDataCount(), 4);
    ASSERT_TRUE(m_manager.CreateSpanNoarea(1, 2, 3, values({}), &id));
    EXPECT_NE(m_manager.CreateSpanNoarea(1, 2, 3, values({})), nullptr);
    EXPECT_EQ(m_manager.GetAllDataCount(), 6);
    EXPECT_THAT(idsOf([&](auto& ids) { return m_manager.GetAreaSetIdList(id, ids); }), IsEmpty());
}

TEST_F(SpecialFamilies, ASpanWhoseAreaRecordFailsHasToldItsIdAndStays)
{
    auto* const table = new CObDefManager;
    table->GetDefList().AddTail(new CObDefault(objectdata::Span, L"span"));
    CObjectManager::ReSetDefManager(table);
    long id = -1;
    EXPECT_FALSE(m_manager.CreateSpan(1, 2, 3, values({}), &id));
    EXPECT_EQ(id, 1);
    EXPECT_NE(m_manager.GetSpanObjectOriginal(1), nullptr);
    EXPECT_EQ(m_manager.CreateSpan(1, 2, 3, values({})), nullptr);
    CObjectManager::ReSetDefManager(nullptr);
    id = -1;
    EXPECT_FALSE(m_manager.CreateSpan(1, 2, 3, values({}), &id));
    EXPECT_EQ(id, -1) << "without the span's own defaults there is no id to tell";
}

} // namespace
