// From names to records.

#include "objects/UnsetNumber.h"
#include "support/Store.h"

#include <gmock/gmock.h>

namespace {

using support::values;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::wstring> toVector(const CStringArray& texts)
{
    std::vector<std::wstring> result;
    for (const CString& text : texts)
        result.emplace_back(text.View());
    return result;
}

class RecordLookups : public testing::Test {
protected:
    support::DefaultsForAllTags m_defaults;
    support::OpenManager m_manager;
    CString m_type = L"before";
};

TEST_F(RecordLookups, OneComparisonFillsIdAndType)
{
    CPipe pipe(5);
    pipe.WriteSubAttribute(L"pename", L"VU");
    unsigned long id = 77;
    EXPECT_TRUE(m_manager.GetSectRecObject(L"VU", L"tag", L"pename", &pipe, id, m_type));
    EXPECT_EQ(id, 5u);
    EXPECT_EQ(m_type, L"tag");
    EXPECT_FALSE(m_manager.GetSectRecObject(L"vu", L"tag", L"pename", &pipe, id, m_type));
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(m_type, L"");
    id = 77;
    m_type = L"x";
    EXPECT_FALSE(m_manager.GetSectRecObject(L"", L"tag", L"pename", nullptr, id, m_type));
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(m_type, L"");
}

TEST_F(RecordLookups, ASectionNameInTwoTablesFindsTheEarlierTable)
{
    m_manager.CreateEgg(values({{L"egname", L"n"}}));
    CPipe* const pipe = m_manager.CreatePipe(values({{L"pename", L"n"}}));
    m_manager.CreatePipe(values({{L"pename", L"n"}}));
    CPipeSection* object = nullptr;
    EXPECT_EQ(m_manager.GetSectRecId(L"n", m_type, &object), pipe->GetObjectId());
    EXPECT_EQ(m_type, L"pipe");
    EXPECT_EQ(object, pipe);
    EXPECT_EQ(m_manager.GetSectRecId(L"n", m_type, nullptr), pipe->GetObjectId());
}

TEST_F(RecordLookups, EachKindOfSectionIsFound)
{
    m_manager.CreateObox(values({{L"obname", L"obox"}}));
    m_manager.CreateCbox(values({{L"cbname", L"cbox"}}));
    m_manager.CreateUbox(values({{L"ubname", L"ubox"}}));
    m_manager.CreateEgg(values({{L"egname", L"egg"}}));
    long id = 0;
    for (const wchar_t* tag : {L"obox", L"cbox", L"ubox", L"egg"}) {
        EXPECT_EQ(m_manager.GetSectRecId(tag, m_type, nullptr), static_cast<unsigned long>(++id));
        EXPECT_EQ(m_type, tag);
    }
}

TEST_F(RecordLookups, TheEmptyNameFindsTheFirstRecordWithoutOne)
{
    m_manager.CreatePipe(values({{L"pename", L"n"}}));
    const CObox* const box = m_manager.CreateObox(values({}));
    m_manager.CreateEgg(values({{L"egname", L""}}));
    EXPECT_EQ(m_manager.GetSectRecId(L"", m_type, nullptr), box->GetObjectId());
    EXPECT_EQ(m_type, L"obox");
}

TEST_F(RecordLookups, AnUnknownSectionNameGivesZeroAndNull)
{
    CPipe pipe(1);
    CPipeSection* object = &pipe;
    EXPECT_EQ(m_manager.GetSectRecId(L"n", m_type, &object), 0u);
    EXPECT_EQ(object, nullptr);
    m_manager.CreatePipe(values({{L"pename", L"other"}}));
    EXPECT_EQ(m_manager.GetSectRecId(L"n", m_type, &object), 0u);
    EXPECT_EQ(object, nullptr);
}

TEST_F(RecordLookups, ASectionKeyLeadsThroughThePipesToTheSection)
{
    long id = -1;
    m_manager.CreateSection(0, values({{L"sekeyword", L"VU"}}));
    EXPECT_FALSE(m_manager.GetSectId(L"VU", id)) << "no pipe section has the key";
    m_manager.CreateUbox(values({{L"ubsectionkey", L"VU"}}));
    m_manager.CreatePipe(values({{L"pesectionkey", L"HP"}}));
    EXPECT_TRUE(m_manager.GetSectId(L"VU", id));
    EXPECT_EQ(id, 1);
    id = -1;
    EXPECT_FALSE(m_manager.GetSectId(L"HP", id)) << "no section has the keyword";
    EXPECT_EQ(id, -1);
    EXPECT_EQ(m_manager.GetSectionId(L"VU"), 1);
    EXPECT_EQ(m_manager.GetSectionId(L"HP"), 0);
}

TEST_F(RecordLookups, TheKindOfASectionDoesNotFollowTheSearchOrder)
{
    const long ids[] = {m_manager.CreatePipe(values({}))->GetId32(), m_manager.CreateCbox(values({}))->GetId32(),
                        m_manager.CreateObox(values({}))->GetId32(), m_manager.CreateUbox(values({}))->GetId32(),
                        m_manager.CreateEgg(values({}))->GetId32()};
    for (int expected = 0; expected < 5; ++expected) {
        int type = -1;
        EXPECT_TRUE(m_manager.GetSectType(ids[expected], type));
        EXPECT_EQ(type, expected);
    }
    const long node = m_manager.CreateNode(values({}))->GetId32();
    int type = -1;
    EXPECT_FALSE(m_manager.GetSectType(node, type));
    EXPECT_FALSE(m_manager.GetSectType(99, type));
    EXPECT_EQ(type, -1);
}

TEST_F(RecordLookups, PipeInformationReadsTheKeysOfTheKind)
{
    const struct {
        const wchar_t* name;
        double expected[5];
    } cases[] = {
        {L"pipe", {1, 1, 2, 2, 3}}, {L"cbox", {1, 2, 3, 4, 5}}, {L"obox", {1, 2, 3, 4, 5}},
        {L"ubox", {1, 2, 3, 4, 5}}, {L"egg", {1, 1, 2, 2, 3}},
    };
    m_manager.CreatePipe(values({{L"pename", L"pipe"}, {L"pedia", L"1"}, {L"pethick", L"2"}, {L"pebase", L"3"}}));
    m_manager.CreateEgg(values({{L"egname", L"egg"}, {L"egdia", L"1"}, {L"egthick", L"2"}, {L"egbase", L"3"}}));
    m_manager.CreateCbox(values({{L"cbname", L"cbox"},
                                 {L"cbheight", L"1"},
                                 {L"cbwidth", L"2"},
                                 {L"cbtthick", L"3"},
                                 {L"cbbthick", L"4"},
                                 {L"cbbase", L"5"}}));
    m_manager.CreateObox(values({{L"obname", L"obox"},
                                 {L"obheight", L"1"},
                                 {L"obbwidth", L"2"},
                                 {L"obtthick", L"3"},
                                 {L"obbthick", L"4"},
                                 {L"obbase", L"5"},
                                 {L"obtwidth", L"9"}}));
    m_manager.CreateUbox(values({{L"ubname", L"ubox"},
                                 {L"ubheight", L"1"},
                                 {L"ubbwidth", L"2"},
                                 {L"ubtthick", L"3"},
                                 {L"ubbthick", L"4"},
                                 {L"ubbase", L"5"},
                                 {L"ubtwidth", L"9"}}));
    for (const auto& [name, expected] : cases) {
        double read[5] = {-1, -1, -1, -1, -1};
        EXPECT_TRUE(m_manager.GetPipeInfo(name, &read[0], &read[1], &read[2], &read[3], &read[4], m_type));
        EXPECT_EQ(m_type, name);
        EXPECT_THAT(read, testing::ElementsAreArray(expected)) << CString(name);
    }
}

TEST_F(RecordLookups, PipeInformationNeedsNoPlaceForTheNumbers)
{
    m_manager.CreatePipe(values({{L"pename", L"n"}}));
    EXPECT_TRUE(m_manager.GetPipeInfo(L"n", nullptr, nullptr, nullptr, nullptr, nullptr, m_type));
    EXPECT_EQ(m_type, L"pipe");
    EXPECT_FALSE(m_manager.GetPipeInfo(L"x", nullptr, nullptr, nullptr, nullptr, nullptr, m_type));
    EXPECT_EQ(m_type, L"");
}

TEST_F(RecordLookups, PipeInformationOfAnUnknownNameIsZero)
{
    double height = 1;
    double base = 1;
    EXPECT_FALSE(m_manager.GetPipeInfo(L"n", &height, nullptr, nullptr, nullptr, &base, m_type));
    EXPECT_EQ(height, 0.0);
    EXPECT_EQ(base, 0.0);
    EXPECT_EQ(m_type, L"") << "also in a design without sections";
}

TEST_F(RecordLookups, DimensionsAreFetchedByName)
{
    m_manager.CreateCbox(values({{L"cbname", L"n"}, {L"cbwidth", L"2"}, {L"cbsectionkey", L"K"}}));
    CPipeSection::tagSPEC spec;
    spec.name = L"unknown";
    EXPECT_FALSE(m_manager.GetPipeSpec(spec));
    EXPECT_EQ(spec.name, L"unknown");
    spec.name = L"n";
    ASSERT_TRUE(m_manager.GetPipeSpec(spec));
    EXPECT_EQ(spec.kind, L"cbox");
    EXPECT_EQ(spec.sectionKey, L"K");
    EXPECT_EQ(spec.width, 2.0);
    EXPECT_EQ(spec.height, obmgr::kUnsetNumber);
    m_manager.GetCboxObjectOriginal(1)->WriteSubAttribute(L"cbwidth", L"3");
    ASSERT_TRUE(m_manager.GetPipeSpec(spec));
    EXPECT_EQ(spec.width, 3.0) << "loaded anew each time";
}

TEST_F(RecordLookups, ACalculationMethodIsFoundInTheOrderOfTheTables)
{
    CString tag = L"before";
    EXPECT_EQ(m_manager.GetFuncRecId(L"n", tag), 0);
    EXPECT_EQ(tag, L"before");
    // From the last table to the first: each new record is found before the ones that are there.
    const std::pair<const wchar_t*, long> steps[] = {
        {L"rural", m_manager.CreateRural(values({{L"rrname", L"n"}}))->GetId32()}};
    for (const auto& [expected, id] : steps) {
        EXPECT_EQ(m_manager.GetFuncRecId(L"n", tag), id);
        EXPECT_EQ(tag, expected);
    }
    const auto expectFound = [&](const CPipeObject* record, const wchar_t* expected) {
        EXPECT_EQ(m_manager.GetFuncRecId(L"n", tag), record->GetId32()) << CString(expected);
        EXPECT_EQ(tag, expected);
    };
    expectFound(m_manager.CreateCombi(values({{L"csname", L"n"}})), L"combi");
    expectFound(m_manager.CreateQrriver(values({{L"qvname", L"n"}})), L"qrriver");
    expectFound(m_manager.CreateQrline(values({{L"qlname", L"n"}})), L"qrline");
    expectFound(m_manager.CreateQrmulti(values({{L"qmname", L"n"}})), L"qrmulti");
    expectFound(m_manager.CreateQrexperiment(values({{L"qename", L"n"}})), L"qrexperiment");
    expectFound(m_manager.CreateQrrational(values({{L"qrname", L"n"}})), L"qrrational");
    expectFound(m_manager.CreateSvyokohama(values({{L"syname", L"n"}})), L"svyokohama");
    expectFound(m_manager.CreateSvperpopula(values({{L"spname", L"n"}})), L"svperpopula");
    expectFound(m_manager.CreateSvperarea(values({{L"saname", L"n"}})), L"svperarea");
}

TEST_F(RecordLookups, ARouteIsFoundByNumberAndWeb)
{
    EXPECT_EQ(m_manager.GetRouteIdFromRouteNum(L"1", 10), 0);
    m_manager.CreateRoute(10, 0, values({{L"routenum", L"1"}}));
    m_manager.CreateRoute(20, 0, values({{L"routenum", L"1"}}));
    m_manager.CreateRoute(20, 0, values({{L"routenum", L"1"}}));
    EXPECT_EQ(m_manager.GetRouteIdFromRouteNum(L"1", 10), 1);
    EXPECT_EQ(m_manager.GetRouteIdFromRouteNum(L"1", 20), 2);
    EXPECT_EQ(m_manager.GetRouteIdFromRouteNum(L"2", 20), 0);
    EXPECT_EQ(m_manager.GetRouteIdFromRouteNum(L"1", 0), 0) << "no project";
    CProject* const project = m_manager.CreateProject(values({}));
    EXPECT_EQ(m_manager.GetRouteIdFromRouteNum(L"1", 0), 0) << "no active web";
    project->WriteSubAttribute(L"activweb", L"20");
    EXPECT_EQ(m_manager.GetRouteIdFromRouteNum(L"1", 0), 2);
}

TEST_F(RecordLookups, ALayoutRangeIsFoundByName)
{
    EXPECT_EQ(m_manager.GetProfilearangObjectFromName(L"n"), nullptr);
    m_manager.CreateProfilearang(values({{L"parangname", L"m"}}));
    CProfilearang* const range = m_manager.CreateProfilearang(values({{L"parangname", L"n"}}));
    m_manager.CreateProfilearang(values({{L"parangname", L"n"}}));
    EXPECT_EQ(m_manager.GetProfilearangObjectFromName(L"n"), range);
}

TEST_F(RecordLookups, AManholeClassIsFoundByCode)
{
    long id = -1;
    EXPECT_FALSE(m_manager.GetManHoleId(L"c", id));
    EXPECT_EQ(id, -1);
    m_manager.CreateManHole(values({{L"mhcode", L"c"}}));
    EXPECT_TRUE(m_manager.GetManHoleId(L"c", id));
    EXPECT_EQ(id, 1);
}

TEST_F(RecordLookups, NamesOfSectionGroupsAreAppended)
{
    CStringArray names;
    names.Add(L"old");
    m_manager.CreateSectGroup(values({{L"sgname", L"b"}}));
    m_manager.CreateSectGroup(values({}));
    m_manager.CreateSectGroup(values({{L"sgname", L"a"}}));
    m_manager.GetSectGroupNameList(names);
    EXPECT_THAT(toVector(names), ElementsAre(L"old", L"b", L"", L"a"));
}

TEST_F(RecordLookups, AreasOfAnInflowAreSummedByRisingCoefficientNumber)
{
    const auto id = m_manager.CreateAreaInq(1, values({}))->GetObjectId();
    const auto owner = static_cast<long>(id);
    m_manager.CreateRaitoSet(values({{L"rtnumber", L"1"}, {L"rtscomment", L"first"}}));
    m_manager.CreateRaitoSet(values({{L"rtnumber", L"1"}, {L"rtscomment", L"one"}}));
    m_manager.CreateInareaset(
        owner, values({{L"iasratiosetnum", L"10"}, {L"iashousel", L"1"}, {L"iashouser", L"2"}, {L"iasarea", L"3.5"}}));
    m_manager.CreateInareaset(owner, values({{L"iasratiosetnum", L"1"}, {L"iashousel", L"10"}, {L"iasarea", L"1"}}));
    m_manager.CreateInareaset(99, values({{L"iasarea", L"1000"}}));
    double houses = -1;
    double area = -1;
    CStringArray numbers;
    CStringArray comments;
    numbers.Add(L"old");
    ASSERT_TRUE(m_manager.GetSumHouseAreaOfAreainq(id, houses, area, numbers, comments));
    EXPECT_EQ(houses, 13.0);
    EXPECT_EQ(area, 4.5);
    EXPECT_THAT(toVector(numbers), ElementsAre(L"1", L"10"));
    EXPECT_THAT(toVector(comments), ElementsAre(L"one", L"")) << "the 10 has no coefficient, its comment is empty";
}

TEST_F(RecordLookups, AreasOfAnOutflowAreSummedInTheSameWay)
{
    const auto id = m_manager.CreateAreaOutq(1, values({}))->GetObjectId();
    const auto owner = static_cast<long>(id);
    m_manager.CreateOutareaset(
        owner, values({{L"oasratiosetnum", L"2"}, {L"oashousel", L"1"}, {L"oashouser", L"2"}, {L"oasarea", L"3"}}));
    m_manager.CreateOutareaset(owner, values({{L"oasratiosetnum", L"2"}, {L"oasarea", L"4"}}));
    double houses = -1;
    double area = -1;
    CStringArray numbers;
    CStringArray comments;
    ASSERT_TRUE(m_manager.GetSumHouseAreaOfAreaoutq(id, houses, area, numbers, comments));
    EXPECT_EQ(houses, 3.0);
    EXPECT_EQ(area, 7.0);
    EXPECT_THAT(toVector(numbers), ElementsAre(L"2", L"2"));
    EXPECT_EQ(comments.GetSize(), 2);
}

TEST_F(RecordLookups, WithoutAreasTheSumIsZeroAndFalse)
{
    CStringArray numbers;
    CStringArray comments;
    for (const unsigned long id : {0ul, 5ul}) {
        double houses = 1;
        double area = 1;
        numbers.Add(L"old");
        EXPECT_FALSE(m_manager.GetSumHouseAreaOfAreainq(id, houses, area, numbers, comments));
        EXPECT_EQ(houses, 0.0);
        EXPECT_EQ(area, 0.0);
        EXPECT_TRUE(numbers.IsEmpty());
        area = 1;
        EXPECT_FALSE(m_manager.GetSumHouseAreaOfAreaoutq(id, houses, area, numbers, comments));
        EXPECT_EQ(area, 0.0);
    }
}

TEST_F(RecordLookups, SortingAreaIdsKeepsEqualNumbersAndDropsUnknownIds)
{
    for (const wchar_t* number : {L"2", L"1", L"2", L"1"}) {
        m_manager.CreateInareaset(1, values({{L"iasratiosetnum", number}}));
        m_manager.CreateOutareaset(1, values({{L"oasratiosetnum", number}}));
    }
    CList<long, long> ids;
    for (const long id : {5L, 99L, 3L, 1L, 7L})
        ids.AddTail(id);
    m_manager.SortInareasetIdList(ids);
    EXPECT_THAT(support::toVector(ids), ElementsAre(3, 7, 5, 1));
    ids.RemoveAll();
    for (const long id : {6L, 4L, 2L, 8L, 1L})
        ids.AddTail(id);
    m_manager.SortOutareasetIdList(ids);
    EXPECT_THAT(support::toVector(ids), ElementsAre(4, 8, 6, 2));
}

TEST_F(RecordLookups, EmptiedDrawingFormatsComeBackByAnAbort)
{
    const CMapStringToString none;
    m_manager.CreateDrawformdat(none);
    m_manager.CreateDrawpendat(none);
    m_manager.CreateDrawpendat(none);
    m_manager.CreateDrawfontdat(none);
    m_manager.CreateDrawbeltdat(none);
    m_manager.CreateDrawsecinfodat(none);
    m_manager.CreateDrawindxfdat(none);
    m_manager.CreateDrawintextdat(none);
    m_manager.CreateNode(values({}));
    m_manager.BeginTransaction();
    m_manager.DrawFigureInitialize();
    EXPECT_EQ(m_manager.GetAllDataCount(), 1);
    m_manager.AbortTransaction();
    EXPECT_EQ(m_manager.GetAllDataCount(), 9);
    EXPECT_EQ(m_manager.GetDrawpendatDb().GetCount(), 2);
    m_manager.DrawFigureInitialize();
    EXPECT_EQ(m_manager.GetAllDataCount(), 1);
}

} // namespace
