// Levels of ground changes, which ones lie on a span, and their order along it.

#include "integrity/RecordsOnRoutes.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace {

using support::ConstSpans;
using support::Network;
using support::number;
using support::text;
using support::values;

using Array = CTypedPtrArray<CObArray, CGlChange*>;
using List = CTypedPtrList<CObList, CGlChange*>;
using Pairs = std::initializer_list<std::pair<const wchar_t*, const wchar_t*>>;

// Ground changes called by names.
class GroundChanges : public testing::Test {
protected:
    Network m_net{"W: R = a-b-c; S = d-c"};

    void SetUp() override
    {
        m_net.Set(L"splength", {{"a-b", L"10"}, {"b-c", L"20"}, {"d-c", L"5"}});
        m_net.Set(L"newgl", {{"a-b", L"100"}, {"b-c", L"110"}, {"d-c", L"104"}});
        m_net.Set(L"oldgl", {{"a-b", L"90"}, {"b-c", L"94"}, {"d-c", L"95"}});
        m_net.Set(L"ndnewgl", {{"c", L"120"}});
        m_net.Set(L"ndoldgl", {{"c", L"96"}});
        m_net.Set(L"spno", {{"a-b", L"1"}, {"b-c", L"2"}, {"d-c", L"1"}});
    }
    CGlChange& Add(const std::string& name, Pairs entered, const char* route = "R")
    {
        CGlChange& record = *m_net.manager.CreateGlChange(m_net[route], values(entered));
        m_net.Name(record.GetId32(), name);
        return record;
    }
    bool Update(bool setLevel = true) { return m_net.manager.update_GlChange(m_net["W"], setLevel); }

    std::string OnSpan(const char* span, int type = 2, bool sort = false, ConstSpans* spans = nullptr)
    {
        return After<Array>("", [&](Array& records) {
            return m_net.manager.GetAllGlChangeObjectArrayFromSpan(&m_net.Span(span), records, spans, sort, type);
        });
    }
    // What a call returns and leaves of the records that the array or list holds before.
    template <class Records, class Call> std::string After(const char* before, Call&& call)
    {
        Records records;
        for (const long id : m_net.List(before)) {
            if constexpr (std::is_same_v<Records, List>)
                records.AddTail(m_net.manager.GetGlChangeObjectOriginal(id));
            else
                records.Add(m_net.manager.GetGlChangeObjectOriginal(id));
        }
        const bool result = call(records);
        return (result ? "true: " : "false: ") + m_net.Names(records);
    }
    std::string Sorted(const char* names)
    {
        Array records;
        for (const long id : m_net.List(names))
            records.Add(m_net.manager.GetGlChangeObjectOriginal(id));
        m_net.manager.SortGLChange(records);
        return m_net.Names(records);
    }
};

// ---- levels ----

TEST_F(GroundChanges, AnElevationIsTakenOverWhenLevelsAreSet)
{
    const CGlChange& record = Add("g", {{L"glindist", L"4"}, {L"glhilevel", L"1"}, {L"glinhi", L"101.25"}});
    EXPECT_TRUE(Update(false));
    EXPECT_EQ(text(record, L"glelev"), L"-");
    EXPECT_TRUE(Update(true));
    EXPECT_EQ(text(record, L"glelev"), L"101.2500000000000");
}

TEST_F(GroundChanges, ARelativeHeightGoesDownFromTheGroundLineWhetherLevelsAreSetOrNot)
{
    for (const bool setLevel : {false, true}) {
        const CGlChange& record = Add(setLevel ? "g" : "h", {{L"glindist", L"4"}, {L"glinhi", L"0.5"}});
        EXPECT_TRUE(Update(setLevel));
        EXPECT_EQ(text(record, L"glelev"), L"103.5000000000000"); // 100 to 110 over 10 m
    }
}

TEST_F(GroundChanges, ARelativeHeightFollowsTheLineOfItsType)
{
    const CGlChange& existing = Add("g", {{L"glindist", L"5"}, {L"gltype", L"1"}});
    const CGlChange& both = Add("h", {{L"glindist", L"5"}, {L"gltype", L"2"}});
    EXPECT_TRUE(Update());
    EXPECT_DOUBLE_EQ(number(existing, L"glelev"), 92.0); // 90 to 94
    EXPECT_DOUBLE_EQ(number(both, L"glelev"), 105.0);    // both: the planned line
}

TEST_F(GroundChanges, ARelativeHeightStandsOnTheLineThroughTheElevationsButNotThroughOtherRelativeHeights)
{
    const CGlChange& relative = Add("g", {{L"glindist", L"8"}, {L"glinhi", L"1"}});
    Add("h", {{L"glindist", L"7"}, {L"glinhi", L"50"}});
    Add("i", {{L"glindist", L"6"}, {L"glhilevel", L"1"}, {L"glinhi", L"200"}});
    EXPECT_TRUE(Update());
    EXPECT_DOUBLE_EQ(number(relative, L"glelev"), 154.0); // 200 at 6 m, 110 at 10 m: 155 at 8 m
}

TEST_F(GroundChanges, AnElevationOfTheOtherLineOnlyDoesNotCount)
{
    const CGlChange& relative = Add("g", {{L"glindist", L"5"}});
    Add("h", {{L"glindist", L"5"}, {L"gltype", L"1"}, {L"glhilevel", L"1"}, {L"glinhi", L"200"}});
    EXPECT_TRUE(Update());
    EXPECT_DOUBLE_EQ(number(relative, L"glelev"), 105.0);
}

TEST_F(GroundChanges, AnyOtherHeightStandardGetsNoLevel)
{
    const CGlChange& record = Add("g", {{L"glindist", L"4"}, {L"glhilevel", L"2"}, {L"glinhi", L"1"}});
    EXPECT_TRUE(Update());
    EXPECT_EQ(text(record, L"glelev"), L"-");
    EXPECT_EQ(number(record, L"gldist"), 4.0);
}

TEST_F(GroundChanges, BeyondTheRouteOnlyTheSpanIsWritten)
{
    for (const wchar_t* standard : {L"0", L"1"}) {
        const CGlChange& record = Add(standard[0] == L'0' ? "g" : "h", {{L"glindist", L"30.5"},
                                                                        {L"glhilevel", standard},
                                                                        {L"glinhi", L"1"},
                                                                        {L"glspanid", L"5"},
                                                                        {L"gldist", L"7"},
                                                                        {L"glelev", L"99"}});
        EXPECT_TRUE(Update());
        EXPECT_EQ(text(record, L"glspanid"), L"0");
        EXPECT_EQ(text(record, L"gldist"), L"7");
        EXPECT_EQ(text(record, L"glelev"), L"99");
    }
}

TEST_F(GroundChanges, AtTheEndOfTheRouteTheLevelIsThatOfTheLastSpansStart)
{
    const CGlChange& record = Add("g", {{L"glindist", L"30"}});
    EXPECT_TRUE(Update());
    EXPECT_EQ(record.GetSubAttributeInt(L"glspanid", 0), m_net["b-c"]);
    EXPECT_DOUBLE_EQ(number(record, L"glelev"), 110.0);
}

TEST_F(GroundChanges, WhenARouteHasNoSpansNoRelativeHeightIsLevelled)
{
    m_net.Add("W: T");
    const CGlChange& record = Add("g", {{L"glindist", L"4"}});
    Add("h", {}, "T");
    EXPECT_FALSE(Update());
    EXPECT_EQ(number(record, L"gldist"), 4.0);
    EXPECT_EQ(text(record, L"glelev"), L"-");
}

// ---- the order along a span ----

TEST_F(GroundChanges, SortRunsFromTheUpperEndDown)
{
    Add("g", {{L"gldist", L"7"}});
    Add("h", {{L"gldist", L"2"}});
    Add("i", {{L"gldist", L"4"}});
    EXPECT_EQ(Sorted("g h i"), "h i g");
}

TEST_F(GroundChanges, WithinTheToleranceTheOrderDecides)
{
    Add("g", {{L"gldist", L"2.000009"}, {L"order", L"1"}});
    Add("h", {{L"gldist", L"2"}, {L"order", L"3"}});
    Add("i", {{L"gldist", L"2.000005"}, {L"order", L"-2"}});
    Add("j", {{L"gldist", L"2.00002"}, {L"order", L"-9"}});
    EXPECT_EQ(Sorted("h j g i"), "i g h j");
}

TEST_F(GroundChanges, EqualRecordsKeepTheirOrder)
{
    Add("g", {{L"gldist", L"2.000009"}});
    Add("h", {{L"gldist", L"2"}});
    EXPECT_EQ(Sorted("g h"), "g h");
    EXPECT_EQ(Sorted("h g"), "h g");
}

// The first and the last differ, the one between is the same as both: the tolerance counts from the first.
TEST_F(GroundChanges, ALineOfCloseRecordsSortsTheSameFromWhereverItStarts)
{
    Add("g", {{L"gldist", L"2"}, {L"order", L"3"}});
    Add("h", {{L"gldist", L"2.000008"}, {L"order", L"2"}});
    Add("i", {{L"gldist", L"2.000016"}, {L"order", L"1"}});
    std::vector<std::string> names{"g", "h", "i"};
    do
        EXPECT_EQ(Sorted((names[0] + " " + names[1] + " " + names[2]).c_str()), "h g i");
    while (std::next_permutation(names.begin(), names.end()));
}

TEST_F(GroundChanges, FewerThanTwoRecordsStayAsTheyAre)
{
    Add("g", {{L"gldist", L"2"}});
    EXPECT_EQ(Sorted(""), "");
    EXPECT_EQ(Sorted("g"), "g");
}

TEST_F(GroundChanges, ListsSortAsArraysDo)
{
    List records;
    records.AddTail(&Add("g", {{L"gldist", L"7"}}));
    records.AddTail(&Add("h", {{L"gldist", L"2"}}));
    m_net.manager.SortGLChange(records);
    EXPECT_EQ(m_net.Names(records), "h g");
    records.RemoveAll();
    m_net.manager.SortGLChange(records);
    EXPECT_EQ(m_net.Names(records), "");
}

TEST_F(GroundChanges, ALongLineSortsAsAPlainComparisonDoes)
{
    const unsigned seed = support::testSeed(7);
    std::mt19937 random(seed);
    Array records;
    for (int i = 0; i < 300; ++i) {
        CGlChange& record = Add("g" + std::to_string(i), {});
        record.WriteSubAttributeDouble(L"gldist", static_cast<double>(random() % 40) / 8.0);
        record.WriteSubAttributeInt(L"order", static_cast<int>(random() % 5) - 2);
        records.Add(&record);
    }
    std::vector<CGlChange*> expected(records.begin(), records.end());
    std::stable_sort(expected.begin(), expected.end(), [](const CGlChange* a, const CGlChange* b) {
        return std::pair(number(*a, L"gldist"), a->GetSubAttributeInt(L"order", 0)) <
               std::pair(number(*b, L"gldist"), b->GetSubAttributeInt(L"order", 0));
    });
    m_net.manager.SortGLChange(records);
    EXPECT_EQ(std::vector<CGlChange*>(records.begin(), records.end()), expected) << "seed " << seed;
}

// ---- arrays and lists ----

TEST_F(GroundChanges, ArraysAndListsAreCopiedInOrderOverWhatWasThere)
{
    CGlChange& g = Add("g", {});
    CGlChange& h = Add("h", {});
    Array array;
    array.Add(&h);
    array.Add(&g);
    List list;
    list.AddTail(&g);
    m_net.manager.GLChangeArrayToList(array, list);
    EXPECT_EQ(m_net.Names(list), "h g");
    array.Add(&g);
    m_net.manager.GLChangeListToArray(list, array);
    EXPECT_EQ(m_net.Names(array), "h g");
    list.RemoveAll();
    m_net.manager.GLChangeListToArray(list, array);
    EXPECT_EQ(m_net.Names(array), "");
}

TEST_F(GroundChanges, AllRecordsAreListedInTableOrder)
{
    const auto all = [&](List& records) { return m_net.manager.GetGlChangeObjectListAll(records); };
    EXPECT_EQ(After<List>("", all), "false: ");
    Add("g", {}, "S");
    Add("h", {});
    EXPECT_EQ(After<List>("", all), "true: g h");
}

// ---- the records on a span ----

TEST_F(GroundChanges, PlacedRecordsLieOnTheirSpan)
{
    Add("g", {{L"glindist", L"4"}});
    Add("h", {{L"glindist", L"14"}});
    Add("i", {{L"glindist", L"4"}}, "S");
    EXPECT_TRUE(Update());
    EXPECT_EQ(OnSpan("a-b"), "true: g");
    EXPECT_EQ(OnSpan("b-c"), "true: h");
    EXPECT_EQ(OnSpan("d-c"), "true: i");
}

TEST_F(GroundChanges, ARecordOfAnotherRouteIsLeftOutThoughItNamesTheSpan)
{
    Add("g", {}, "S").WriteSubAttributeInt(L"glspanid", static_cast<int>(m_net["a-b"]));
    EXPECT_EQ(OnSpan("a-b"), "false: ");
}

TEST_F(GroundChanges, ATypeLeavesOutTheRecordsOfTheOtherLineOnly)
{
    Add("planned", {{L"glindist", L"4"}, {L"gltype", L"0"}});
    Add("existing", {{L"glindist", L"4"}, {L"gltype", L"1"}});
    Add("both", {{L"glindist", L"4"}, {L"gltype", L"2"}});
    EXPECT_EQ(OnSpan("a-b", 0), "true: planned both");
    EXPECT_EQ(OnSpan("a-b", 1), "true: existing both");
    EXPECT_EQ(OnSpan("a-b", 2), "true: planned existing both");
    EXPECT_EQ(OnSpan("a-b", -1), "true: planned existing both");
}

TEST_F(GroundChanges, TheRecordsOnASpanStandInTableOrderOrSorted)
{
    Add("g", {{L"glindist", L"4"}});
    Add("h", {{L"glindist", L"2"}});
    EXPECT_TRUE(Update());
    EXPECT_EQ(OnSpan("a-b", 2, false), "true: g h");
    EXPECT_EQ(OnSpan("a-b", 2, true), "true: h g");
}

TEST_F(GroundChanges, ARecordThatIsNotPlacedIsFoundAlongTheRoute)
{
    Add("above", {{L"glindist", L"14"}});
    Add("below", {{L"glindist", L"21"}, {L"gldistdir", L"1"}});
    EXPECT_EQ(OnSpan("a-b"), "true: below");
    EXPECT_EQ(OnSpan("b-c"), "true: above");
}

TEST_F(GroundChanges, BeyondTheRouteARecordIsDrawnOnTheLastSpanWithStatusBitTwo)
{
    CGlChange& above = Add("above", {{L"glindist", L"31"}});
    CGlChange& below = Add("below", {{L"glindist", L"31"}, {L"gldistdir", L"1"}});
    above.SetStatus(8 + 1);
    EXPECT_EQ(OnSpan("b-c"), "true: above");
    EXPECT_EQ(OnSpan("a-b"), "true: below");
    EXPECT_EQ(above.GetStatus(), 8 + 2 + 1);
    EXPECT_EQ(below.GetStatus(), 2);
    above.WriteSubAttribute(L"glindist", L"30");
    EXPECT_EQ(OnSpan("b-c"), "true: above");
    EXPECT_EQ(above.GetStatus(), 8 + 1);
}

TEST_F(GroundChanges, AlongGivenSpansOnlyTheseCount)
{
    ConstSpans spans;
    spans.AddTail(&m_net.Span("a-b"));
    const CGlChange& record = Add("g", {{L"glindist", L"14"}});
    EXPECT_EQ(OnSpan("a-b", 2, false, &spans), "true: g");
    EXPECT_EQ(record.GetStatus(), 2);
    EXPECT_EQ(OnSpan("b-c", 2, false, &spans), "false: ");
}

TEST_F(GroundChanges, BySpanNumberARecordLiesOnTheSpanWithThatDisplayNumber)
{
    CGlChange& record = Add("g", {{L"glspannum", L"2"}, {L"glindist", L"20"}});
    record.SetStatus(4 + 2 + 1);
    EXPECT_EQ(OnSpan("b-c"), "true: g");
    EXPECT_EQ(record.GetStatus(), 4);
    EXPECT_EQ(OnSpan("a-b"), "false: ");
}

TEST_F(GroundChanges, ADistanceBeyondTheSpanSetsStatusBitTwo)
{
    CGlChange& record = Add("g", {{L"glspannum", L"2"}, {L"glindist", L"20.5"}});
    EXPECT_EQ(OnSpan("b-c"), "true: g");
    EXPECT_EQ(record.GetStatus(), 2);
}

TEST_F(GroundChanges, ASpanNumberBeyondTheRouteIsDrawnOnTheLastSpanWithStatusBitOne)
{
    CGlChange& above = Add("above", {{L"glspannum", L"3"}, {L"glindist", L"21"}});
    CGlChange& negative = Add("negative", {{L"glspannum", L"-1"}});
    EXPECT_EQ(OnSpan("b-c"), "true: above negative");
    EXPECT_EQ(above.GetStatus(), 1 + 2);
    EXPECT_EQ(negative.GetStatus(), 1);
    above.SetStatus(0);
    EXPECT_EQ(OnSpan("a-b"), "false: "); // the number is judged before the span
    EXPECT_EQ(above.GetStatus(), 1);
}

TEST_F(GroundChanges, APlacedRecordWithASpanNumberIsJudgedByItsDistanceOnly)
{
    CGlChange& record = Add("g", {{L"glspannum", L"1"}, {L"glindist", L"11"}});
    record.WriteSubAttributeInt(L"glspanid", static_cast<int>(m_net["a-b"]));
    record.SetStatus(1);
    EXPECT_EQ(OnSpan("a-b"), "true: g");
    EXPECT_EQ(record.GetStatus(), 1 + 2);
    record.WriteSubAttribute(L"glindist", L"10");
    EXPECT_EQ(OnSpan("a-b"), "true: g");
    EXPECT_EQ(record.GetStatus(), 1);
}

TEST_F(GroundChanges, APlacedRecordAlongTheRouteKeepsItsStatus)
{
    CGlChange& record = Add("g", {{L"glindist", L"14"}});
    EXPECT_TRUE(Update());
    record.SetStatus(7);
    EXPECT_EQ(OnSpan("b-c"), "true: g");
    EXPECT_EQ(record.GetStatus(), 7);
}

TEST_F(GroundChanges, AllFormsGiveTheSameAndEmptyTheirListFirst)
{
    Add("g", {{L"glindist", L"4"}});
    Add("h", {{L"glindist", L"2"}});
    Add("i", {{L"glindist", L"14"}});
    const CObjectManager& manager = m_net.manager;
    for (const bool sort : {false, true}) {
        const std::string expected = OnSpan("a-b", 2, sort);
        const CSpan* const span = &m_net.Span("a-b");
        const auto id = static_cast<unsigned long>(m_net["a-b"]);
        EXPECT_EQ(After<Array>("i",
                               [&](Array& records) {
                                   return manager.GetAllGlChangeObjectArrayFromSpan(id, records, nullptr, sort, 2);
                               }),
                  expected);
        EXPECT_EQ(After<List>("i",
                              [&](List& records) {
                                  return manager.GetAllGlChangeObjectListFromSpan(span, records, nullptr, sort, 2);
                              }),
                  expected);
        EXPECT_EQ(After<List>("i",
                              [&](List& records) {
                                  return manager.GetAllGlChangeObjectListFromSpan(id, records, nullptr, sort, 2);
                              }),
                  expected);
    }
}

TEST_F(GroundChanges, AnUnknownSpanHasNone)
{
    Add("g", {{L"glindist", L"4"}});
    for (const unsigned long unknown : {0UL, 99999UL, static_cast<unsigned long>(-1L)}) {
        EXPECT_EQ(After<Array>("g",
                               [&](Array& records) {
                                   return m_net.manager.GetAllGlChangeObjectArrayFromSpan(unknown, records, nullptr,
                                                                                          true, 2);
                               }),
                  "false: ");
        EXPECT_EQ(After<List>("g",
                              [&](List& records) {
                                  return m_net.manager.GetAllGlChangeObjectListFromSpan(unknown, records, nullptr, true,
                                                                                        2);
                              }),
                  "false: ");
    }
    Array records;
    EXPECT_FALSE(m_net.manager.GetAllGlChangeObjectArrayFromSpan(nullptr, records, nullptr, true, 2));
}

TEST_F(GroundChanges, ASpanWhoseRouteHasNoSpansHasNone)
{
    Add("g", {{L"glindist", L"4"}});
    CSpan copy(m_net.Span("a-b"));
    copy.SetRouteId(99999);
    Array records;
    EXPECT_FALSE(m_net.manager.GetAllGlChangeObjectArrayFromSpan(&copy, records, nullptr, false, 2));
}

} // namespace
