// Orders of routes by one key, and the comparison of texts with numbers in them.

#include "support/Networks.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using support::Ids;
using support::Network;
using support::Routes;

class RouteSort : public testing::Test {
protected:
    Network m_net{"W: A; B; C; D; E; X"};
    support::OpenManager& m_manager = m_net.manager;

    // The routes of `in` sorted into a list that holds X before.
    template <class Sort> std::string Sorted(const char* in, Sort&& sort) const
    {
        const Ids list = m_net.List(in);
        const std::string told = m_net.After("X", [&](CList<long, long>& out) { sort(list, out); });
        EXPECT_EQ(m_net.Names(list), in) << "the input stays";
        return told;
    }
    std::string ByNumber(const char* in) const
    {
        return Sorted(in, [&](auto& list, auto& out) { m_manager.SortRouteRouteNumber(list, out); });
    }
    std::string ByNaturalNumber(const char* in) const
    {
        return Sorted(in, [&](auto& list, auto& out) { m_manager.SortRouteRouteNumberN3(list, out); });
    }
    std::string ByInput(const char* in) const
    {
        return Sorted(in, [&](auto& list, auto& out) { m_manager.SortRouteInputNumber(list, out); });
    }
};

// ---- by number ----

TEST_F(RouteSort, ByNumberGoesByCharacterCode)
{
    m_net.Set(L"routenum", {{"A", L"9"}, {"B", L"10"}, {"C", L"a"}, {"D", L"B"}, {"E", L""}});
    EXPECT_EQ(ByNumber("A B"), "X B A");
    EXPECT_EQ(ByNumber("A B C D E"), "X E B A D C");
}

TEST_F(RouteSort, ByNumberAPrefixComesFirstAndOtherScriptsLast)
{
    m_net.Set(L"routenum", {{"A", L"\uac00"}, {"B", L"12-1"}, {"C", L"z"}, {"D", L"12"}});
    EXPECT_EQ(ByNumber("A B C D"), "X D B C A");
}

TEST_F(RouteSort, ByNumberEqualOnesStandAsTheExchangeSortLeavesThem)
{
    m_net.Set(L"routenum", {{"A", L"2"}, {"B", L"2"}, {"C", L"1"}});
    EXPECT_EQ(ByNumber("A B C"), "X C B A");
}

TEST_F(RouteSort, ByNaturalNumberNumbersCountAsNumbers)
{
    m_net.Set(L"routenum", {{"A", L"10"}, {"B", L"9"}, {"C", L"A10"}, {"D", L"A2"}});
    EXPECT_EQ(ByNaturalNumber("A B"), "X B A");
    EXPECT_EQ(ByNaturalNumber("C D"), "X D C");
}

TEST_F(RouteSort, ByNaturalNumberTextsThatRunOutKeepTheirPlace)
{
    m_net.Set(L"routenum", {{"A", L"1a"}, {"B", L"1"}, {"C", L""}});
    EXPECT_EQ(ByNaturalNumber("A B"), "X A B");
    EXPECT_EQ(ByNaturalNumber("B A"), "X B A");
    EXPECT_EQ(ByNaturalNumber("A C"), "X A C");
    EXPECT_EQ(ByNaturalNumber("C A"), "X C A");
}

TEST_F(RouteSort, ByNaturalNumberComparesTheLaterWithTheEarlier)
{
    // Every pair is compared as (later, earlier): an empty later text never moves ahead.
    m_net.Set(L"routenum", {{"A", L"5"}, {"B", L""}, {"C", L"3"}});
    EXPECT_EQ(ByNaturalNumber("A B C"), "X C B A");
}

TEST_F(RouteSort, ByInputNumberRisesByOrder)
{
    m_net.Set(L"order", {{"A", L"10"}, {"B", L"9"}, {"C", L"-1"}, {"D", L"3"}});
    EXPECT_EQ(ByInput("A B C D E"), "X C E D B A");
}

TEST_F(RouteSort, NothingIsSortedToNothing)
{
    EXPECT_EQ(ByNumber(""), "X");
    EXPECT_EQ(ByNaturalNumber(""), "X");
    EXPECT_EQ(ByInput(""), "X");
}

// ---- by flow order ----

TEST_F(RouteSort, FlowOrderIsAnExchangeSortOfIdsAndOfObjects)
{
    m_net.Set(L"floworder", {{"A", L"2"}, {"B", L"2"}, {"C", L"1"}, {"D", L"10"}, {"E", L"9"}});
    const auto ids = [&](const char* routes) {
        return m_net.After(routes, [&](CList<long, long>& out) { m_manager.SortFlowOrder(out); });
    };
    const auto objects = [&](const char* routes) {
        return m_net.AfterFor<Routes>(routes, [&](auto& out) { m_manager.SortFlowOrder(out); });
    };
    EXPECT_EQ(ids("D E A B C"), "C B A E D");
    EXPECT_EQ(objects("D E A B C"), "C B A E D");
    EXPECT_EQ(ids("A B C"), "C B A");
    EXPECT_EQ(objects("A B C"), "C B A");
    EXPECT_EQ(ids("A B"), "A B");
    EXPECT_EQ(objects("B A"), "B A");
    EXPECT_EQ(ids(""), "");
    EXPECT_EQ(objects(""), "");
}

template <class Route> class FlowOrderOfArrays : public RouteSort {
protected:
    void SetUp() override
    {
        m_net.Set(L"floworder", {{"A", L"7"}, {"B", L"7"}, {"C", L"7"}, {"D", L"7"}, {"E", L"1"}});
    }
    std::string Sorted(const char* routes, long low, long high) const
    {
        CArray<Route*> array;
        for (const long id : m_net.List(routes))
            array.Add(m_manager.GetRouteObjectOriginal(id));
        CObjectManager::sort_route_by_floworder(array, low, high);
        return m_net.Names(array);
    }
};

using RouteClasses = testing::Types<CRoute, const CRoute>;
TYPED_TEST_SUITE(FlowOrderOfArrays, RouteClasses);

TYPED_TEST(FlowOrderOfArrays, IsAQuicksortWithThePivotInTheMiddle)
{
    EXPECT_EQ(this->Sorted("A B C D", 0, 3), "C D A B");
    EXPECT_EQ(this->Sorted("A B C", 0, 2), "C B A");
    EXPECT_EQ(this->Sorted("A B", 0, 1), "B A");
    EXPECT_EQ(this->Sorted("A B E", 0, 2), "E B A");
    EXPECT_EQ(this->Sorted("A", 0, 0), "A");
}

TYPED_TEST(FlowOrderOfArrays, SortsFromOneIndexToAnother)
{
    EXPECT_EQ(this->Sorted("A B E C", 1, 2), "A E B C");
    EXPECT_EQ(this->Sorted("A B E C", 0, 1), "B A E C");
}

TYPED_TEST(FlowOrderOfArrays, AnIndexOutsideTheArrayIsAnInvalidArgument)
{
    EXPECT_THROW(this->Sorted("A B", 0, 2), CInvalidArgException);
    EXPECT_THROW(this->Sorted("A B", -1, 1), CInvalidArgException);
    EXPECT_THROW(this->Sorted("A B", -4, 1), CInvalidArgException);
    EXPECT_THROW(this->Sorted("", 0, 1), CInvalidArgException);
}

// ---- by order ----

class OrderOfRoutes : public RouteSort {
protected:
    std::string SortedIds(const char* routes, long low, long high) const
    {
        return m_net.After(routes, [&](CList<long, long>& out) { m_manager.SortOrderRoute(out, low, high); });
    }
    std::string SortedObjects(const char* routes, long low, long high) const
    {
        return m_net.AfterFor<Routes>(routes, [&](auto& out) { m_manager.SortOrderRoute(out, low, high); });
    }
};

TEST_F(OrderOfRoutes, RisesOverTheWholeListByDefault)
{
    m_net.Set(L"order", {{"A", L"10"}, {"B", L"9"}, {"C", L"-1"}, {"D", L"3"}});
    EXPECT_EQ(SortedIds("A B C D E", -1, -1), "C E D B A");
    EXPECT_EQ(SortedObjects("A B C D E", -1, -1), "C E D B A");
    EXPECT_EQ(SortedIds("A B C D E", 0, 4), "C E D B A");
}

TEST_F(OrderOfRoutes, EqualOnesStandAsTheQuicksortLeavesThem)
{
    EXPECT_EQ(SortedIds("A B C D", -1, -1), "C D A B");
    EXPECT_EQ(SortedObjects("A B C D", -1, -1), "C D A B");
    EXPECT_EQ(SortedIds("A B C", -1, -1), "C B A");
    EXPECT_EQ(SortedObjects("A B C", -1, -1), "C B A");
}

TEST_F(OrderOfRoutes, MaySortAPartOfTheList)
{
    m_net.Set(L"order", {{"A", L"5"}, {"B", L"4"}, {"C", L"3"}, {"D", L"2"}});
    EXPECT_EQ(SortedIds("A B C D", 1, 2), "A C B D");
    EXPECT_EQ(SortedObjects("A B C D", 1, 2), "A C B D");
    EXPECT_EQ(SortedIds("A B C D", 2, -1), "A B D C");
    EXPECT_EQ(SortedIds("A B C D", -1, 1), "B A C D");
}

TEST_F(OrderOfRoutes, AShortListIsItsOwnOrder)
{
    EXPECT_EQ(SortedIds("", -1, -1), "");
    EXPECT_EQ(SortedObjects("", -1, -1), "");
    EXPECT_EQ(SortedIds("A", -1, -1), "A");
    EXPECT_EQ(SortedObjects("A", -1, -1), "A");
}

TEST_F(OrderOfRoutes, AnUnknownPivotEndsTheSortAtOnce)
{
    m_net.Set(L"order", {{"A", L"5"}, {"B", L"4"}});
    Ids ids{m_net["A"], 9999, m_net["B"]};
    m_manager.SortOrderRoute(ids, -1, -1);
    EXPECT_THAT(support::toVector(ids), testing::ElementsAre(m_net["A"], 9999, m_net["B"]));
}

TEST_F(OrderOfRoutes, AnUnknownIdEndsTheSortWhereItStands)
{
    // Pivot C (3): A and E change places, then the walk up meets the unknown id.
    m_net.Set(L"order", {{"A", L"5"}, {"C", L"3"}, {"D", L"4"}, {"E", L"1"}});
    Ids ids{m_net["A"], 9999, m_net["C"], m_net["D"], m_net["E"]};
    m_manager.SortOrderRoute(ids, -1, -1);
    EXPECT_THAT(support::toVector(ids), testing::ElementsAre(m_net["E"], 9999, m_net["C"], m_net["D"], m_net["A"]));
}

// ---- texts with numbers ----

struct Comparison {
    const wchar_t *a, *b;
    int expected;
};

TEST(StrNumCmp, ComparesNumbersAsNumbersAndTheRestByCharacter)
{
    const Comparison comparisons[] = {
        {L"10", L"9", 1},  {L"9", L"10", -1}, {L"A2", L"A10", -8},     {L"A10", L"A2", 8},
        {L"a", L"b", -1},  {L"b", L"a", 1},   {L"a1b", L"a1c", -1},    {L"12-3", L"12-5", -2},
        {L"ab", L"ab", 0}, {L"7", L"007", 0}, {L"-5", L"3", -8},       {L"5", L"-5", 10},
        {L"-5", L"-5", 0}, {L"x", L"1", -1},  {L"1-2-3", L"1-2-3", 0}, {L"+4", L"4", 0},
    };
    for (const Comparison& tested : comparisons)
        EXPECT_EQ(CObjectManager::StrNumCmp(tested.a, tested.b), tested.expected) << tested.a << " " << tested.b;
}

TEST(StrNumCmp, TextsThatRunOutAreEqualToLongerOnes)
{
    const Comparison comparisons[] = {
        {L"", L"x", 0},   {L"x", L"", 0},   {L"", L"", 0},  {L"1", L"1a", 0},    {L"1a", L"1", 0},
        {L"a", L"ab", 0}, {L"ab", L"a", 0}, {L"", L"5", 0}, {L"A1", L"A1-2", 0}, {L"5", L"", 0},
    };
    for (const Comparison& tested : comparisons)
        EXPECT_EQ(CObjectManager::StrNumCmp(tested.a, tested.b), tested.expected) << tested.a << " " << tested.b;
}

TEST(StrNumCmp, AStretchOfCharactersIsComparedOnlyUpToADigitOfEitherText)
{
    EXPECT_EQ(CObjectManager::StrNumCmp(L"a1", L"ab1"), 1) << "a is passed, then 1 and nothing are compared";
    EXPECT_EQ(CObjectManager::StrNumCmp(L"ab1", L"a1"), -1);
}

TEST(StrNumCmp, ReadsASignButDoesNotSkipIt)
{
    // Equal numbers; then the digits of the second text are passed, and it has run out.
    EXPECT_EQ(CObjectManager::StrNumCmp(L"+4", L"4"), 0);
    EXPECT_EQ(CObjectManager::StrNumCmp(L" 4x", L" 4y"), -1);
}

TEST(StrNumCmp, DifferencesWrapIn32Bits)
{
    EXPECT_EQ(CObjectManager::StrNumCmp(L"-2147483648", L"1"), 2147483647);
    EXPECT_EQ(CObjectManager::StrNumCmp(L"4294967297", L"1"), 0);
}

struct Reading {
    const wchar_t* text;
    int expected;
};

TEST(Fatoi, ReadsBlanksASignAndDigits)
{
    const Reading readings[] = {
        {L"12", 12}, {L"  -12x", -12}, {L"\t\n+7", 7}, {L"", 0},    {L"abc", 0}, {L"- 7", 0},
        {L"--7", 0}, {L"+-7", 0},      {L"0012", 12},  {L"1.9", 1}, {L"   ", 0}, {L"-", 0},
    };
    for (const Reading& reading : readings)
        EXPECT_EQ(CObjectManager::_fatoi(reading.text), reading.expected) << reading.text;
}

TEST(Fatoi, WrapsIn32Bits)
{
    const Reading readings[] = {
        {L"2147483647", 2147483647}, {L"2147483648", -2147483647 - 1},  {L"4294967296", 0}, {L"4294967299", 3},
        {L"-4294967299", -3},        {L"-2147483648", -2147483647 - 1},
    };
    for (const Reading& reading : readings)
        EXPECT_EQ(CObjectManager::_fatoi(reading.text), reading.expected) << reading.text;
}

TEST(SkipDigit, PassesLeadingDigitsOnly)
{
    EXPECT_STREQ(CObjectManager::SkipDigit(L"12ab3"), L"ab3");
    EXPECT_STREQ(CObjectManager::SkipDigit(L"ab3"), L"ab3");
    EXPECT_STREQ(CObjectManager::SkipDigit(L"-1"), L"-1");
    EXPECT_STREQ(CObjectManager::SkipDigit(L" 1"), L" 1");
    EXPECT_STREQ(CObjectManager::SkipDigit(L"12"), L"");
    EXPECT_STREQ(CObjectManager::SkipDigit(L""), L"");
    const wchar_t* const text = L"12ab";
    EXPECT_EQ(CObjectManager::SkipDigit(text), text + 2);
}

} // namespace
