// Orders of records by one key: the exchange sorts, the stable sorts, the numbering of lists.

#include "support/Networks.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using support::Network;
using support::Values;
using support::values;
using testing::ElementsAre;
using testing::IsEmpty;

using M = CObjectManager;
using Ids = std::vector<long>;
template <class T> using CreatePlain = T* (CObjectManager::*)(const Values&);
template <class T> using CreateWithLink = T* (CObjectManager::*)(long, const Values&);
template <class T> using CreateWithCode = T* (CObjectManager::*)(int, const Values&);

template <class T, CreatePlain<T> Create> long Plain(CObjectManager& manager, const Values& pairs)
{
    return (manager.*Create)(pairs)->GetId32();
}
template <class T, CreateWithLink<T> Create> long Linked(CObjectManager& manager, const Values& pairs)
{
    return (manager.*Create)(0L, pairs)->GetId32();
}
template <class T, CreateWithCode<T> Create> long Coded(CObjectManager& manager, const Values& pairs)
{
    return (manager.*Create)(0, pairs)->GetId32();
}

struct RecordSortCase {
    const char* name;
    const wchar_t* key;
    long (*create)(CObjectManager&, const Values&);
};

template <class Case> class SortOfRecords : public testing::TestWithParam<Case> {
protected:
    support::DefaultsForAllTags m_defaults;
    support::OpenManager m_manager;

    long Create(const wchar_t* number)
    {
        return this->GetParam().create(m_manager, values({{this->GetParam().key, number}}));
    }
};

// ---- exchange sorts ----

struct ExchangeCase : RecordSortCase {
    void (CObjectManager::*sort)(CList<long, long>&) const;
};

const ExchangeCase kExchangeSorts[] = {
    {{"Outq", L"order", Linked<COutq, &M::CreateOutq>}, &M::SortOrderOutq},
    {{"AreaInq", L"order", Linked<CAreaInq, &M::CreateAreaInq>}, &M::SortOrderAreaInq},
    {{"AreaOutq", L"order", Linked<CAreaOutq, &M::CreateAreaOutq>}, &M::SortOrderAreaOutq},
    {{"FixInq", L"order", Linked<CFixInq, &M::CreateFixInq>}, &M::SortOrderFixInq},
    {{"IcpInq", L"order", Linked<CIcpInq, &M::CreateIcpInq>}, &M::SortOrderIcpInq},
    {{"MountInq", L"order", Linked<CMountInq, &M::CreateMountInq>}, &M::SortOrderMountInq},
    {{"Web", L"order", Coded<CWeb, &M::CreateWeb>}, &M::SortOrderWeb},
    {{"Profilearea", L"order", Linked<CProfilearea, &M::CreateProfilearea>}, &M::SortOrderProfilearea},
    {{"Sheetarea", L"order", Linked<CSheetarea, &M::CreateSheetarea>}, &M::SortOrderSheetarea},
    {{"Profilelayout", L"order", Linked<CProfilelayout, &M::CreateProfilelayout>}, &M::SortOrderProfilelayout},
    {{"Drawbeltdat", L"order", Plain<CDrawbeltdat, &M::CreateDrawbeltdat>}, &M::SortOrderDrawbeltdat},
    {{"Drawsecinfodat", L"order", Plain<CDrawsecinfodat, &M::CreateDrawsecinfodat>}, &M::SortOrderDrawsecinfodat},
};

class ExchangeSorts : public SortOfRecords<ExchangeCase> {
protected:
    Ids Sorted(std::initializer_list<long> ids) const
    {
        support::Ids list(ids);
        (m_manager.*GetParam().sort)(list);
        return support::toVector(list);
    }
};

TEST_P(ExchangeSorts, RiseByOrder)
{
    const long ten = Create(L"10"), nine = Create(L"9"), minus = Create(L"-3");
    EXPECT_THAT(Sorted({ten, nine, minus}), ElementsAre(minus, nine, ten));
    EXPECT_THAT(Sorted({ten, minus}), ElementsAre(minus, ten));
    EXPECT_THAT(Sorted({}), IsEmpty());
}

TEST_P(ExchangeSorts, EqualOnesStandAsExchangesLeaveThem)
{
    const long first = Create(L"2"), second = Create(L"2"), least = Create(L"1");
    EXPECT_THAT(Sorted({first, second}), ElementsAre(first, second));
    EXPECT_THAT(Sorted({second, first}), ElementsAre(second, first));
    EXPECT_THAT(Sorted({first, second, least}), ElementsAre(least, second, first));
}

TEST_P(ExchangeSorts, AnIdWithoutARecordCountsAsZero)
{
    const long plus = Create(L"1"), minus = Create(L"-1");
    EXPECT_THAT(Sorted({plus, 9999, minus}), ElementsAre(minus, 9999, plus));
}

TEST_P(ExchangeSorts, ARecordWithoutOrderCountsAsZero)
{
    const long plus = Create(L"1"), minus = Create(L"-1");
    const long none = GetParam().create(m_manager, values({}));
    EXPECT_THAT(Sorted({plus, none, minus}), ElementsAre(minus, none, plus));
}

INSTANTIATE_TEST_SUITE_P(Types, ExchangeSorts, testing::ValuesIn(kExchangeSorts),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(SpanLevels, FallByLowerLevel)
{
    Network net("W: R = a-b-c-d-e");
    net.Set(L"lowercentinv", {{"a-b", L"1"}, {"b-c", L"-2"}, {"c-d", L"10"}});
    const auto sorted = [&](const char* spans) {
        return net.After(spans, [&](CList<long, long>& out) { net.manager.SortOrderSpanLowercentinv(out); });
    };
    EXPECT_EQ(sorted("b-c a-b d-e c-d"), "c-d a-b d-e b-c");
    EXPECT_EQ(sorted(""), "");
}

TEST(SpanLevels, EqualWithinTheToleranceKeepTheirPlace)
{
    Network net("W: R = a-b-c-d");
    net.Set(L"lowercentinv", {{"a-b", L"1"}, {"b-c", L"1.000009"}, {"c-d", L"1.00002"}});
    const auto sorted = [&](const char* spans) {
        return net.After(spans, [&](CList<long, long>& out) { net.manager.SortOrderSpanLowercentinv(out); });
    };
    EXPECT_EQ(sorted("a-b b-c"), "a-b b-c");
    EXPECT_EQ(sorted("b-c a-b"), "b-c a-b");
    EXPECT_EQ(sorted("a-b c-d"), "c-d a-b");
    // Three levels, each close to the next: the first changes places with the third alone.
    EXPECT_EQ(sorted("a-b b-c c-d"), "c-d b-c a-b");
}

// ---- numbering ----

TEST(Numbering, OfWebsGoesByWhatTheyHad)
{
    Network net("A: ; B: ; C:");
    net.Set(L"order", {{"A", L"7"}, {"B", L"9"}, {"C", L"-1"}});
    EXPECT_EQ(net.After("A B C", [&](CList<long, long>& webs) { net.manager.ReNumberOrderWeb(webs); }), "C A B");
    EXPECT_EQ(net.Get(L"order", "A B C"), L"2 3 1");
}

TEST(Numbering, OfWebsNumbersThoseOfTheListAlone)
{
    Network net("A: ; B: ; C:");
    net.Set(L"order", {{"A", L"7"}, {"B", L"9"}, {"C", L"-1"}});
    EXPECT_EQ(net.After("B", [&](CList<long, long>& webs) { net.manager.ReNumberOrderWeb(webs); }), "B");
    EXPECT_EQ(net.Get(L"order", "A B C"), L"7 1 -1");
}

TEST(Numbering, OfSectionGroupRecordsGoesByTheListAndSkipsUnknownIds)
{
    support::DefaultsForAllTags defaults;
    support::OpenManager manager;
    CSectGroupRec* const a = manager.CreateSectGroupRec(values({{L"order", L"1"}}));
    CSectGroupRec* const b = manager.CreateSectGroupRec(values({{L"order", L"2"}}));
    CSectGroupRec* const c = manager.CreateSectGroupRec(values({}));
    manager.ReNumberOrderSecgrouprec(support::Ids{c->GetId32(), 9999, b->GetId32(), 0, a->GetId32()});
    EXPECT_EQ(a->GetSubAttribute(L"order"), L"3");
    EXPECT_EQ(b->GetSubAttribute(L"order"), L"2");
    EXPECT_EQ(c->GetSubAttribute(L"order"), L"1");
}

// ---- stable sorts ----

struct StableCase : RecordSortCase {
    bool (CObjectManager::*sort)(CList<long, long>&) const;
};

const StableCase kStableSorts[] = {
    {{"Inareaset", L"iasratiosetnum", Linked<CInareaset, &M::CreateInareaset>}, &M::SortInareasetIdList},
    {{"Outareaset", L"oasratiosetnum", Linked<COutareaset, &M::CreateOutareaset>}, &M::SortOutareasetIdList},
    {{"AreaSet", L"asratiosetnum", Linked<CAreaSet, &M::CreateAreaSet>}, &M::SortAreasetIDList},
    {{"Drawbelttx", L"order", Linked<CDrawbelttx, &M::CreateDrawbelttx>}, &M::SortDrawbelttxIDList},
    {{"Execution", L"ecnum", Plain<CExecution, &M::CreateExecution>}, &M::SortExecutionIDList},
    {{"Retain", L"ernum", Plain<CRetain, &M::CreateRetain>}, &M::SortRetainIDList},
    {{"Timber", L"tbnum", Plain<CTimber, &M::CreateTimber>}, &M::SortTimberIDList},
    {{"Foundation", L"fdnum", Plain<CFoundation, &M::CreateFoundation>}, &M::SortFoundIDList},
    {{"ManHole", L"order", Plain<CManHole, &M::CreateManHole>}, &M::SortManholeIDList},
    {{"Section", L"order", Coded<CSection, &M::CreateSection>}, &M::SortSectIDList},
    {{"SectGroup", L"order", Plain<CSectGroup, &M::CreateSectGroup>}, &M::SortSectGroupIDList},
    {{"SectGroupRec", L"order", Plain<CSectGroupRec, &M::CreateSectGroupRec>}, &M::SortSectGroupRecIDList},
};

class StableSorts : public SortOfRecords<StableCase> {
protected:
    Ids Sorted(std::initializer_list<long> ids) const
    {
        support::Ids list(ids);
        EXPECT_TRUE((m_manager.*GetParam().sort)(list));
        return support::toVector(list);
    }
};

TEST_P(StableSorts, RiseByTheirKey)
{
    const long ten = Create(L"10"), nine = Create(L"9"), minus = Create(L"-3");
    EXPECT_THAT(Sorted({ten, nine, minus}), ElementsAre(minus, nine, ten));
    EXPECT_THAT(Sorted({}), IsEmpty());
}

TEST_P(StableSorts, EqualOnesKeepTheirOrder)
{
    const long first = Create(L"2"), second = Create(L"2"), third = Create(L"2"), least = Create(L"1");
    EXPECT_THAT(Sorted({first, second, third, least}), ElementsAre(least, first, second, third));
    EXPECT_THAT(Sorted({third, least, first, second}), ElementsAre(least, third, first, second));
}

TEST_P(StableSorts, AnIdWithoutARecordLeavesTheList)
{
    const long two = Create(L"2"), one = Create(L"1");
    const long zero = Create(L"0");
    const long other = m_manager.CreatePpMark({})->GetId32();
    EXPECT_THAT(Sorted({two, 0, zero, 9999, one, other, -1}), ElementsAre(zero, one, two));
    EXPECT_THAT(Sorted({9999}), IsEmpty());
}

TEST_P(StableSorts, AnIdMayStandTwice)
{
    const long two = Create(L"2"), one = Create(L"1");
    EXPECT_THAT(Sorted({two, one, two}), ElementsAre(one, two, two));
}

TEST_P(StableSorts, ARecordWithoutTheKeyCountsAsZero)
{
    const long plus = Create(L"1"), minus = Create(L"-1");
    const long none = GetParam().create(m_manager, values({}));
    EXPECT_THAT(Sorted({plus, none, minus}), ElementsAre(minus, none, plus));
}

INSTANTIATE_TEST_SUITE_P(Types, StableSorts, testing::ValuesIn(kStableSorts),
                         [](const auto& tested) { return std::string(tested.param.name); });

// ---- pipe sections ----

struct PipeCase : RecordSortCase {
    int pipeClass;
};

const PipeCase kPipeClasses[] = {
    {{"Pipe", L"order", Plain<CPipe, &M::CreatePipe>}, 0}, {{"Cbox", L"order", Plain<CCbox, &M::CreateCbox>}, 1},
    {{"Obox", L"order", Plain<CObox, &M::CreateObox>}, 2}, {{"Ubox", L"order", Plain<CUbox, &M::CreateUbox>}, 3},
    {{"Egg", L"order", Plain<CEgg, &M::CreateEgg>}, 4},
};

class PipeSorts : public SortOfRecords<PipeCase> {
protected:
    // The sorted ids; the rest, which held something before, goes to m_rest.
    Ids Sorted(int pipeClass, std::initializer_list<long> ids)
    {
        support::Ids list(ids), rest{12345};
        EXPECT_TRUE(m_manager.SortPipeIDList(pipeClass, list, rest));
        m_rest = support::toVector(rest);
        return support::toVector(list);
    }

    Ids m_rest;
};

TEST_P(PipeSorts, RiseByOrderAndEqualOnesKeepTheirOrder)
{
    const long two = Create(L"2"), alsoTwo = Create(L"2"), none = Create(L"0"), ten = Create(L"10");
    EXPECT_THAT(Sorted(GetParam().pipeClass, {ten, two, alsoTwo, none}), ElementsAre(none, two, alsoTwo, ten));
    EXPECT_THAT(m_rest, IsEmpty());
}

TEST_P(PipeSorts, NegativeOrdersAndUnknownIdsGoToTheRest)
{
    const long two = Create(L"2"), minus = Create(L"-1"), one = Create(L"1");
    EXPECT_THAT(Sorted(GetParam().pipeClass, {9999, two, minus, one, 0}), ElementsAre(one, two));
    EXPECT_THAT(m_rest, ElementsAre(9999, minus, 0));
}

TEST_P(PipeSorts, OtherClassesGoToTheRest)
{
    const long two = Create(L"2"), one = Create(L"1");
    for (const int pipeClass : {-1, 0, 1, 2, 3, 4, 5}) {
        if (pipeClass == GetParam().pipeClass) continue;
        EXPECT_THAT(Sorted(pipeClass, {two, one}), IsEmpty());
        EXPECT_THAT(m_rest, ElementsAre(two, one));
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, PipeSorts, testing::ValuesIn(kPipeClasses),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
