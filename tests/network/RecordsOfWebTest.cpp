// What hangs on a web by its routes, nodes and spans.

#include "support/Networks.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using support::Network;
using support::Values;
using support::values;

using IdsOfWeb = bool (CObjectManager::*)(long, CList<long, long>&) const;
template <class T> using ObjectsOfWeb = bool (CObjectManager::*)(long, CTypedPtrList<CObList, T*>&) const;
template <class T> using CreateOwned = T* (CObjectManager::*)(long, const Values&);

// The object list of a web as ids.
using ObjectIdsOfWeb = bool (*)(const CObjectManager&, long, CList<long, long>&);
template <class T, ObjectsOfWeb<T> Get> bool ObjectIds(const CObjectManager& manager, long web, CList<long, long>& ids)
{
    CTypedPtrList<CObList, T*> objects;
    const bool result = (manager.*Get)(web, objects);
    for (T* object : objects)
        ids.AddTail(object->GetId32());
    return result;
}

template <class T, CreateOwned<T> Create> long CreateOn(CObjectManager& manager, long owner, const Values& pairs)
{
    return (manager.*Create)(owner, pairs)->GetId32();
}

CString number(long value)
{
    return std::to_wstring(value).c_str();
}

// ---- records of a route ----

struct RouteRecords {
    const char* name;
    bool isSorted;
    long (*create)(CObjectManager&, long, const Values&);
    IdsOfWeb ids; // null when there is no such list
    ObjectIdsOfWeb objects;
};

using M = CObjectManager;
const RouteRecords kRouteRecords[] = {
    {"AreaInq", true, CreateOn<CAreaInq, &M::CreateAreaInq>, &M::GetAreaInqIdListFromWeb,
     ObjectIds<CAreaInq, &M::GetAreaInqObjectListFromWeb>},
    {"AreaOutq", true, CreateOn<CAreaOutq, &M::CreateAreaOutq>, &M::GetAreaOutqIdListFromWeb,
     ObjectIds<CAreaOutq, &M::GetAreaOutqObjectListFromWeb>},
    {"FixInq", true, CreateOn<CFixInq, &M::CreateFixInq>, &M::GetFixInqIdListFromWeb,
     ObjectIds<CFixInq, &M::GetFixInqObjectListFromWeb>},
    {"MountInq", true, CreateOn<CMountInq, &M::CreateMountInq>, &M::GetMountInqIdListFromWeb,
     ObjectIds<CMountInq, &M::GetMountInqObjectListFromWeb>},
    {"Outq", true, CreateOn<COutq, &M::CreateOutq>, &M::GetOutqIdListFromWeb,
     ObjectIds<COutq, &M::GetOutqObjectListFromWeb>},
    {"GlChange", false, CreateOn<CGlChange, &M::CreateGlChange>, &M::GetGlChangeIdListFromWeb,
     ObjectIds<CGlChange, &M::GetGlChangeObjectListFromWeb>},
    {"Lateral", false, CreateOn<CLateral, &M::CreateLateral>, &M::GetLateralIdListFromWeb,
     ObjectIds<CLateral, &M::GetLateralObjectListFromWeb>},
    {"Vjoint", false, CreateOn<CVjoint, &M::CreateVjoint>, nullptr, ObjectIds<CVjoint, &M::GetVjointObjectListFromWeb>},
};

void PrintTo(const RouteRecords& records, std::ostream* stream)
{
    *stream << records.name;
}

class RecordsOfRoutes : public testing::TestWithParam<RouteRecords> {
protected:
    Network m_net{"W: A = a-m; V: X = x-y; W: M = m-n; E:"};

    void Create(const char* name, const char* route, const wchar_t* order)
    {
        m_net.Name(GetParam().create(m_net.manager, m_net[route], values({{L"order", order}})), name);
    }
    std::string IdList(const char* web) const
    {
        return m_net.After("a", [&](auto& out) { return (m_net.manager.*GetParam().ids)(m_net[web], out); });
    }
    std::string ObjectList(const char* web) const
    {
        return m_net.After("a", [&](auto& out) { return GetParam().objects(m_net.manager, m_net[web], out); });
    }
};

TEST_P(RecordsOfRoutes, AreThoseOfTheWebsRoutes)
{
    Create("r1", "M", L"3");
    Create("r2", "A", L"1");
    Create("x1", "X", L"0");
    Create("r3", "M", L"2");
    EXPECT_EQ(ObjectList("W"), "true: a r1 r2 r3");
    EXPECT_EQ(ObjectList("V"), "true: a x1");
    if (!GetParam().ids) return;
    EXPECT_EQ(IdList("W"), GetParam().isSorted ? "true: a r2 r3 r1" : "true: a r1 r2 r3");
    EXPECT_EQ(IdList("V"), "true: a x1");
}

TEST_P(RecordsOfRoutes, EqualOrdersStandAsTheExchangeSortLeavesThem)
{
    Create("r1", "A", L"2");
    Create("r2", "M", L"2");
    Create("r3", "A", L"1");
    EXPECT_EQ(ObjectList("W"), "true: a r1 r2 r3");
    if (!GetParam().ids) return;
    EXPECT_EQ(IdList("W"), GetParam().isSorted ? "true: a r3 r2 r1" : "true: a r1 r2 r3");
}

TEST_P(RecordsOfRoutes, AreNoneForAWebWithoutThem)
{
    Create("x1", "X", L"0");
    for (const char* web : {"W", "E"}) {
        EXPECT_EQ(ObjectList(web), "false: a");
        if (GetParam().ids) {
            EXPECT_EQ(IdList(web), "false: a");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Types, RecordsOfRoutes, testing::ValuesIn(kRouteRecords),
                         [](const auto& tested) { return std::string(tested.param.name); });

// ---- records with a way of their own ----

class RecordsOfWeb : public testing::Test {
protected:
    Network m_net{"W: A>M = a-b-m; V: X = x-y; W: M = m-n; F = lonely; E:"};
    support::OpenManager& m_manager = m_net.manager;

    std::string Listed(IdsOfWeb ids, const char* owner) const
    {
        return m_net.After("", [&](auto& out) { return (m_manager.*ids)(m_net[owner], out); });
    }
    std::string Listed(ObjectIdsOfWeb objects, const char* owner) const
    {
        return m_net.After("", [&](auto& out) { return objects(m_manager, m_net[owner], out); });
    }
    void Inflow(const char* name, const char* node, const wchar_t* order)
    {
        m_net.Name(m_manager.CreateIcpInq(m_net[node], values({{L"order", order}}))->GetId32(), name);
    }
};

TEST_F(RecordsOfWeb, InterceptorInflowsAreThoseAtTheNodesOfTheWebsSpans)
{
    Inflow("i1", "a", L"4");
    Inflow("i2", "n", L"1");
    Inflow("i3", "y", L"0");
    Inflow("i4", "m", L"3");
    Inflow("i5", "lonely", L"2");
    EXPECT_EQ(Listed(&M::GetIcpInqIdListFromWeb, "W"), "true: i2 i4 i1");
    EXPECT_EQ(Listed(&M::GetIcpInqIdListFromWeb, "V"), "true: i3");
    EXPECT_EQ(Listed(&M::GetIcpInqIdListFromWeb, "E"), "false:");
    constexpr auto objects = ObjectIds<CIcpInq, &M::GetIcpInqObjectListFromWeb>;
    EXPECT_EQ(Listed(objects, "W"), "true: i1 i2 i4");
    EXPECT_EQ(Listed(objects, "V"), "true: i3");
    EXPECT_EQ(Listed(objects, "E"), "false:");
}

TEST_F(RecordsOfWeb, InterceptorInflowsOfARouteAreThoseAtItsUpperNodesByOrder)
{
    Inflow("i1", "a", L"4");
    Inflow("i2", "n", L"1");
    Inflow("i3", "b", L"2");
    Inflow("i4", "m", L"3");
    EXPECT_EQ(Listed(&M::GetIcpInqIdListFromRoute, "A"), "true: i3 i1");
    EXPECT_EQ(Listed(&M::GetIcpInqIdListFromRoute, "M"), "true: i4");
    EXPECT_EQ(Listed(&M::GetIcpInqIdListFromRoute, "X"), "false:");
    EXPECT_EQ(Listed(&M::GetIcpInqIdListFromRoute, "F"), "false:");
}

TEST_F(RecordsOfWeb, GroundLineChangesOfASpanNameIt)
{
    const auto create = [&](const char* name, const char* route, const char* span) {
        m_net.Name(m_manager.CreateGlChange(m_net[route], values({{L"glspanid", number(m_net[span])}}))->GetId32(),
                   name);
    };
    create("g1", "A", "a-b");
    create("g2", "A", "b-m");
    create("g3", "M", "a-b");
    EXPECT_EQ(Listed(&M::GetGlChangeIdListFromSpan, "a-b"), "true: g1 g3");
    EXPECT_EQ(Listed(&M::GetGlChangeIdListFromSpan, "b-m"), "true: g2");
    EXPECT_EQ(Listed(&M::GetGlChangeIdListFromSpan, "m-n"), "false:");
}

TEST_F(RecordsOfWeb, CrossingPointsNameARouteFirstOrSecond)
{
    const long crossing = m_manager.CreateInters({})->GetId32();
    const auto create = [&](const char* name, long first, long second) {
        m_net.Name(m_manager.CreateIntPos(first, second, {})->GetId32(), name);
    };
    create("p1", m_net["M"], crossing);
    create("p2", crossing, m_net["A"]);
    create("p3", m_net["X"], crossing);
    create("p4", m_net["A"], m_net["M"]);
    create("p5", m_net["A"], m_net["x-y"]);
    EXPECT_EQ(Listed(&M::GetIntPosIdListFromWeb, "W"), "true: p1 p2 p4 p5");
    EXPECT_EQ(Listed(&M::GetIntPosIdListFromWeb, "V"), "true: p3");
    EXPECT_EQ(Listed(&M::GetIntPosIdListFromWeb, "E"), "false:");
    constexpr auto objects = ObjectIds<CIntPos, &M::GetIntPosObjectListFromWeb>;
    EXPECT_EQ(Listed(objects, "W"), "true: p1 p2 p4 p5");
    EXPECT_EQ(Listed(objects, "V"), "true: p3");
    EXPECT_EQ(Listed(objects, "E"), "false:");
}

TEST_F(RecordsOfWeb, CrossingsAreThoseWithAPointOnARouteEachOnce)
{
    for (const char* name : {"c1", "c2", "c3", "c4"})
        m_net.Name(m_manager.CreateInters({})->GetId32(), name);
    m_manager.CreateIntPos(m_net["M"], m_net["c3"], {});
    m_manager.CreateIntPos(m_net["A"], m_net["c3"], {});
    m_manager.CreateIntPos(m_net["c1"], m_net["A"], {});
    m_manager.CreateIntPos(m_net["X"], m_net["c2"], {});
    m_manager.CreateIntPos(m_net["X"], m_net["c3"], {});
    EXPECT_EQ(Listed(&M::GetIntersIdListFromWeb, "W"), "true: c1 c3");
    EXPECT_EQ(Listed(&M::GetIntersIdListFromWeb, "V"), "true: c2 c3");
    EXPECT_EQ(Listed(&M::GetIntersIdListFromWeb, "E"), "false:");
    constexpr auto objects = ObjectIds<CInters, &M::GetIntersObjectListFromWeb>;
    EXPECT_EQ(Listed(objects, "W"), "true: c1 c3");
    EXPECT_EQ(Listed(objects, "V"), "true: c2 c3");
    EXPECT_EQ(Listed(objects, "E"), "false:");
}

TEST_F(RecordsOfWeb, SectionValvesAreThoseOnTheWebsSpans)
{
    const auto create = [&](const char* name, const char* span) {
        m_net.Name(m_manager.CreateSecvalve(values({{L"svspid", number(m_net[span])}}))->GetId32(), name);
    };
    create("s1", "m-n");
    create("s2", "x-y");
    create("s3", "a-b");
    create("s4", "lonely");
    EXPECT_EQ(Listed(&M::GetSecvalveIdListFromWeb, "W"), "true: s1 s3");
    EXPECT_EQ(Listed(&M::GetSecvalveIdListFromWeb, "V"), "true: s2");
    EXPECT_EQ(Listed(&M::GetSecvalveIdListFromWeb, "E"), "false:");
    constexpr auto objects = ObjectIds<CSecvalve, &M::GetSecvalveObjectListFromWeb>;
    EXPECT_EQ(Listed(objects, "W"), "true: s1 s3");
    EXPECT_EQ(Listed(objects, "V"), "true: s2");
    EXPECT_EQ(Listed(objects, "E"), "false:");
}

TEST_F(RecordsOfWeb, OverhaulPlacesAreThoseOnTheWebsSpans)
{
    const auto create = [&](const char* name, const char* span) {
        m_net.Name(m_manager.CreateOhaul(values({{L"ohspid", number(m_net[span])}}))->GetId32(), name);
    };
    create("o1", "m-n");
    create("o2", "x-y");
    create("o3", "a-b");
    create("o4", "lonely");
    EXPECT_EQ(Listed(&M::GetOhaulIdListFromWeb, "W"), "true: o1 o3");
    EXPECT_EQ(Listed(&M::GetOhaulIdListFromWeb, "V"), "true: o2");
    EXPECT_EQ(Listed(&M::GetOhaulIdListFromWeb, "E"), "false:");
    constexpr auto objects = ObjectIds<COhaul, &M::GetOhaulObjectListFromWeb>;
    EXPECT_EQ(Listed(objects, "W"), "true: o1 o3");
    EXPECT_EQ(Listed(objects, "V"), "true: o2");
    EXPECT_EQ(Listed(objects, "E"), "false:");
}

TEST_F(RecordsOfWeb, CoefficientsAreThoseThatAnAreaRecordOfTheWebNames)
{
    const std::pair<const char*, const wchar_t*> coefficients[] = {
        {"k5", L"5"}, {"k1", L"1"}, {"k2", L"2"}, {"k3", L"3"}, {"k4", L"4"}};
    for (const auto& [name, text] : coefficients)
        m_net.Name(m_manager.CreateRaitoSet(values({{L"rtnumber", text}}))->GetId32(), name);
    m_manager.CreateAreaSet(m_net["a-b"], values({{L"asratiosetnum", L"1"}}));
    m_manager.CreateAreaSet(m_net["m-n"], values({{L"asratiosetnum", L"1"}}));
    m_manager.CreateAreaSet(m_net["x-y"], values({{L"asratiosetnum", L"2"}}));
    m_manager.CreateInareaset(m_manager.CreateAreaInq(m_net["M"], {})->GetId32(), values({{L"iasratiosetnum", L"5"}}));
    m_manager.CreateOutareaset(m_manager.CreateAreaOutq(m_net["A"], {})->GetId32(),
                               values({{L"oasratiosetnum", L"3"}}));
    constexpr auto objects = ObjectIds<CRaitoSet, &M::GetRaitoSetObjectListFromWeb>;
    EXPECT_EQ(Listed(objects, "W"), "true: k5 k1 k3");
    EXPECT_EQ(Listed(objects, "V"), "true: k2");
    EXPECT_EQ(Listed(objects, "E"), "false:");
}

} // namespace
