// The library and the model behind the same members, so that a query is written once for both: ids are ints, id lists
// are vectors, lists and arrays of objects are vectors of borrowed pointers.
#pragma once

#include "reference/NetworkScript.h"

#include <memory>
#include <type_traits>

namespace reference {

// ---- arguments of the library's members ----

// Any argument that needs no change.
template <class A> struct Passed {
    A value;
    explicit Passed(A given) : value(given) {}
    A Get() { return value; }
};

// A result by reference.
struct PassedId {
    int& id;
    long value;
    explicit PassedId(int& given) : id(given), value(given) {}
    ~PassedId() { id = static_cast<int>(value); }
    PassedId(const PassedId&) = delete;
    PassedId& operator=(const PassedId&) = delete;
    long& Get() { return value; }
};

struct PassedList {
    Ids* ids;
    CList<long, long> list;
    explicit PassedList(Ids& given) : ids(&given) { ToList(given, list); }
    explicit PassedList(const Ids& given) : ids(nullptr) { ToList(given, list); }
    ~PassedList()
    {
        if (!ids) return;
        ids->clear();
        for (const long id : list)
            ids->push_back(static_cast<int>(id));
    }
    PassedList(const PassedList&) = delete;
    PassedList& operator=(const PassedList&) = delete;
    CList<long, long>& Get() { return list; }
};

template <class A>
using PassedAs = std::conditional_t<
    std::is_same_v<A, int&>, PassedId,
    std::conditional_t<
        std::is_same_v<std::remove_cvref_t<A>, Ids>, PassedList,
        std::conditional_t<std::is_same_v<std::remove_cvref_t<A>, int>, Passed<long>,
                           Passed<std::conditional_t<std::is_lvalue_reference_v<A>, A, std::remove_reference_t<A>>>>>>;

using Objects = std::vector<CPipeObject*>;

// `call` with a list or array of the library's that holds `objects` before, and after it the other way round.
template <class List, class Call> auto WithObjects(Objects& objects, Call&& call)
{
    List list;
    for (CPipeObject* const object : objects) {
        if constexpr (requires { list.GetTailPosition(); })
            list.AddTail(static_cast<std::remove_cvref_t<decltype(*list.begin())>>(object));
        else
            list.Add(static_cast<std::remove_cvref_t<decltype(*list.begin())>>(object));
    }
    const auto result = call(list);
    objects.clear();
    for (const CPipeObject* const object : list)
        objects.push_back(const_cast<CPipeObject*>(object));
    return result;
}

class LibrarySide {
public:
    using ObjectList = Objects;

    explicit LibrarySide(OpenNetwork& library) : m_library(library) {}

    // The live objects with the ids, as far as there are such.
    Objects Some(Type type, const Ids& ids)
    {
        Objects objects;
        for (const int id : ids)
            if (CPipeObject* const object = m_library.TableOf(type).Find(id)) objects.push_back(object);
        return objects;
    }
    void Show(Outcome& outcome, Type, const Objects& objects) const { outcome.AddObjects(m_library, objects); }

#define OBM_FORWARD(name)                                                                                              \
    template <class... A> auto name(A&&... arguments)                                                                  \
    {                                                                                                                  \
        return Call([&](auto&&... converted) { return m_library.name(converted...); }, std::forward<A>(arguments)...); \
    }
    OBM_FORWARD(GetMostLowerNodeId)
    OBM_FORWARD(GetMostUpperNodeId)
    OBM_FORWARD(GetLastSpanFromRoute)
    OBM_FORWARD(GetSortUpNodeInRoute)
    OBM_FORWARD(GetSpanNumInRoute)
    OBM_FORWARD(GetRouteLength)
    OBM_FORWARD(IsFirstSpanAndGetSecondSpan)
    OBM_FORWARD(GetLowerSpan)
    OBM_FORWARD(GetUpperSpan)
    OBM_FORWARD(GetUpperSpanObjectList)
    OBM_FORWARD(GetConnectALlSpanToNode)
    OBM_FORWARD(GetSpanConnectUpperNode)
    OBM_FORWARD(GetSpanConnectLowerNode)
    OBM_FORWARD(GetFlowInSpanToNode)
    OBM_FORWARD(IsConnectSpanToNode)
    OBM_FORWARD(GetAllLowerNodeFromSpan)
    OBM_FORWARD(GetAllUpperNodeFromSpan)
    OBM_FORWARD(IsEqualCoordNode)
    OBM_FORWARD(GetIcpinqLowinvSpanID)
    OBM_FORWARD(GetOverlapNodeFromOtherWebs)
    OBM_FORWARD(GetRouteIdList)
    OBM_FORWARD(GetSpanIdList)
    OBM_FORWARD(GetNodeIdList)
    OBM_FORWARD(GetSpanFormProject)
    OBM_FORWARD(GetSpanNumInWeb)
    OBM_FORWARD(GetRouteNumInWeb)
    OBM_FORWARD(GetWbareasetflg)
    OBM_FORWARD(GetSpanArea)
    OBM_FORWARD(GetRouteArea)
    OBM_FORWARD(GetWebArea)
    OBM_FORWARD(GetRouteAreaT)
    OBM_FORWARD(GetWebIdFromSpan)
    OBM_FORWARD(GetWebIdFromNode)
    OBM_FORWARD(GetWebIdFromIcpInq)
    OBM_FORWARD(GetWebIdFromAreaSet)
    OBM_FORWARD(GetWebIdFromOutq)
    OBM_FORWARD(GetWebIdFromInters)
    OBM_FORWARD(GetWebIdFromLaunit)
    OBM_FORWARD(GetWebIdFromVacunit)
    OBM_FORWARD(GetWebIdFromSecvalve)
    OBM_FORWARD(GetWebIdFromOhaul)
    OBM_FORWARD(GetIcpInqIdListFromRoute)
    OBM_FORWARD(GetGlChangeIdListFromSpan)
    OBM_FORWARD(GetConnectRouteAll)
    OBM_FORWARD(GetNextRouteId)
    OBM_FORWARD(GetNextRouteIdAll)
    OBM_FORWARD(GetConnectRouteUpperAllByOrder)
    OBM_FORWARD(GetConnectRouteLowerAll)
    OBM_FORWARD(GetRouteIdListFromTo)
    OBM_FORWARD(GetLowRouteId)
    OBM_FORWARD(GetUpperRouteId)
    OBM_FORWARD(GetUpperRouteObjectList)
    OBM_FORWARD(GetRouteBySphst)
    OBM_FORWARD(GetRouteBySphdt)
    OBM_FORWARD(GetOverlapRouteFromWebs)
    OBM_FORWARD(GetMostUpperNode)
    OBM_FORWARD(GetMostUpperRouteByNode)
    OBM_FORWARD(ReverseIdList)
    OBM_FORWARD(GetFlowEndNodeId)
    OBM_FORWARD(GetFlowEndNodeIdList)
    OBM_FORWARD(GetFlowEndFixedRoute)
    OBM_FORWARD(IsDivideNode)
#undef OBM_FORWARD

    bool GetSpanSyakyori(int spanId, double& length)
    {
        return m_library.GetSpanSyakyori(static_cast<unsigned long>(spanId), length);
    }
    int GetWebIdFormName(const std::wstring& name)
    {
        return static_cast<int>(m_library.GetWebIdFormName(ToCString(name)));
    }
    bool CheckDuplicateFlowEndName(int webId, const std::wstring& name)
    {
        return m_library.CheckDuplicateFlowEndName(webId, ToCString(name));
    }

    // ---- members with several list types ----
    using Spans = CTypedPtrList<CObList, CSpan*>;
    using Routes = CTypedPtrList<CObList, CRoute*>;
    using Nodes = CTypedPtrList<CObList, CNode*>;
    using ConstSpans = CList<const CSpan*>;

    bool GetSortSpanInRoute(int routeId, Ids& spanIds, bool lowestFirst)
    {
        PassedList list(spanIds);
        return m_library.GetSortSpanInRoute(routeId, list.Get(), lowestFirst);
    }
    bool GetSortSpanInRoute(int routeId, Objects& spans, bool lowestFirst)
    {
        return WithObjects<Spans>(spans,
                                  [&](auto& list) { return m_library.GetSortSpanInRoute(routeId, list, lowestFirst); });
    }
    bool GetSortSpanInRouteStrict(int routeId, Objects& spans, bool lowestFirst)
    {
        return WithObjects<ConstSpans>(
            spans, [&](auto& list) { return m_library.GetSortSpanInRoute(routeId, list, lowestFirst); });
    }
    bool GetSortSpanNodeInRoute(int routeId, Objects& spans, Objects& nodes)
    {
        return WithObjects<Spans>(spans, [&](auto& spanList) {
            return WithObjects<Nodes>(
                nodes, [&](auto& nodeList) { return m_library.GetSortSpanNodeInRoute(routeId, spanList, nodeList); });
        });
    }
    // Both list types have to give the same.
    bool GetSpanObjectListFromRoute(int routeId, bool lowestFirst, Objects& spans, bool sorted)
    {
        Objects second = spans;
        const bool result = WithObjects<Spans>(spans, [&](auto& list) {
            return m_library.GetSpanObjectListFromRoute(routeId, lowestFirst, list, sorted);
        });
        const bool other = WithObjects<ConstSpans>(second, [&](auto& list) {
            return m_library.GetSpanObjectListFromRoute(routeId, lowestFirst, list, sorted);
        });
        if (result != other || spans != second) spans.push_back(nullptr);
        return result;
    }
    void GetLowerSpanObjectList(int spanId, Ids& spanIds)
    {
        PassedList list(spanIds);
        m_library.GetLowerSpanObjectList(spanId, list.Get());
    }
    bool GetLowerSpanObjectList(int fromSpanId, int toSpanId, Ids& spanIds)
    {
        PassedList list(spanIds);
        return m_library.GetLowerSpanObjectList(fromSpanId, toSpanId, list.Get());
    }
    bool GetFlowInSpanToSpan(int webId, int spanId, Ids& spanIds)
    {
        PassedList list(spanIds);
        return m_library.GetFlowInSpanToSpan(webId, spanId, list.Get());
    }
    int GetFlowInSpanToSpan(int spanId, Objects& spans)
    {
        return WithObjects<CArray<const CSpan*>>(
            spans, [&](auto& array) { return m_library.GetFlowInSpanToSpan(spanId, array); });
    }
    bool GetSpanFromWeb(int webId, Ids& spanIds)
    {
        PassedList list(spanIds);
        return m_library.GetSpanFromWeb(webId, list.Get());
    }
    bool GetSpanFromWeb(int webId, Objects& spans)
    {
        return WithObjects<Spans>(spans, [&](auto& list) { return m_library.GetSpanFromWeb(webId, list); });
    }
    bool GetRouteObjectListFromWeb(int webId, Objects& routes, bool rising, bool sorted)
    {
        return WithObjects<Routes>(
            routes, [&](auto& list) { return m_library.GetRouteObjectListFromWeb(webId, list, rising, sorted); });
    }
    bool GetSpanObjectListFromWeb(int webId, Objects& spans)
    {
        return WithObjects<Spans>(spans, [&](auto& list) { return m_library.GetSpanObjectListFromWeb(webId, list); });
    }
    bool GetNodeObjectListFromWeb(int webId, Objects& nodes, bool sorted)
    {
        return WithObjects<Nodes>(nodes,
                                  [&](auto& list) { return m_library.GetNodeObjectListFromWeb(webId, list, sorted); });
    }
    int GetConnectRoute(int routeId, const Ids& candidates, Ids& out)
    {
        PassedList in(candidates);
        PassedList list(out);
        return m_library.GetConnectRoute(routeId, in.Get(), list.Get());
    }
    int GetConnectRoute(const Objects& routes, int routeId, Objects& out, bool constForm)
    {
        return constForm ? FromArray<const CRoute*>(routes, routeId, out) : FromArray<CRoute*>(routes, routeId, out);
    }
    int GetConnectRoute(Objects& routes, int routeId, bool recursive, bool sort, Objects& out, bool constForm)
    {
        const auto call = [&](auto& in, auto& array) {
            return m_library.GetConnectRoute(in, routeId, recursive, sort, array);
        };
        if (constForm) return WithTwo<const CRoute*>(routes, out, call);
        return WithTwo<CRoute*>(routes, out, call);
    }
    void GetConnectRouteSortOrder(int webId, int routeId, Objects& routes)
    {
        WithObjects<Routes>(routes, [&](auto& list) {
            m_library.GetConnectRouteSortOrder(webId, routeId, list);
            return true;
        });
    }
    int GetRouteObjectArrayFromWeb(int webId, Objects& routes, bool constForm)
    {
        const auto call = [&](auto& array) { return m_library.GetRouteObjectArrayFromWeb(webId, array); };
        return constForm ? WithObjects<CArray<const CRoute*>>(routes, call)
                         : WithObjects<CArray<CRoute*>>(routes, call);
    }
    int GetSpanObjectArrayFromRoute(int routeId, Objects& spans)
    {
        return WithObjects<CArray<CSpan*>>(
            spans, [&](auto& array) { return m_library.GetSpanObjectArrayFromRoute(routeId, array); });
    }
    void GetConnectRouteUpperAll(int routeId, const Ids& candidates, Ids& out)
    {
        PassedList in(candidates);
        PassedList list(out);
        m_library.GetConnectRouteUpperAll(routeId, in.Get(), list.Get());
    }
    void GetConnectRouteUpperAll(int routeId, const NodeMap& byConnectId, Ids& out);
    bool CreateMapLowNodeSpan(int webId, NodeMap& spansByNode);
    bool GetIdListFromWeb(Type type, int webId, Ids& ids);
    bool GetObjectListFromWeb(Type type, int webId, Objects& objects);

    OpenNetwork& Library()
    {
        return m_library;
    }

private:
    template <class Function, class... A> static auto Call(Function&& function, A&&... arguments)
    {
        using Result = decltype(function(std::declval<PassedAs<A&&>&>().Get()...));
        return CallWith<Result>(function, PassedAs<A&&>(arguments)...);
    }

    template <class Result, class Function, class... P> static auto CallWith(Function& function, P&&... passed)
    {
        if constexpr (std::is_same_v<Result, long>)
            return static_cast<int>(function(passed.Get()...));
        else
            return function(passed.Get()...);
    }

    template <class Entry, class Call> static int WithTwo(Objects& in, Objects& out, Call&& call)
    {
        return WithObjects<CArray<Entry>>(in, [&](auto& first) {
            return WithObjects<CArray<Entry>>(out, [&](auto& second) { return call(first, second); });
        });
    }

    template <class Entry> int FromArray(const Objects& routes, int routeId, Objects& out)
    {
        Objects in = routes;
        return WithTwo<Entry>(in, out, [&](const auto& first, auto& second) {
            return m_library.GetConnectRoute(first, routeId, second);
        });
    }

    OpenNetwork& m_library;
};

class ModelSide : public Network {
public:
    using ObjectList = Records;

    explicit ModelSide(const Network& network) : Network(network) {}

    Records Some(Type type, const Ids& ids) const
    {
        Records records;
        for (const int id : ids)
            if (Record* const record = Find(type, id)) records.push_back(record);
        return records;
    }
    void Show(Outcome& outcome, Type type, const Records& records) const { outcome.AddObjects(*this, type, records); }

    using Network::GetConnectRoute;
    using Network::GetRouteObjectArrayFromWeb;
    int GetConnectRoute(const Records& routes, int routeId, Records& out, bool) const
    {
        return Network::GetConnectRoute(routes, routeId, out);
    }
    int GetConnectRoute(Records& routes, int routeId, bool recursive, bool sort, Records& out, bool) const
    {
        return Network::GetConnectRoute(routes, routeId, recursive, sort, out);
    }
    int GetRouteObjectArrayFromWeb(int webId, Records& routes, bool) const
    {
        return Network::GetRouteObjectArrayFromWeb(webId, routes);
    }
};

// A query from one function for both sides: query(side, arguments, outcome).
template <class Query>
StepKind MakeQuery(const char* name, int weight, std::function<Args(Choice&)> choose, Query query)
{
    return {name, weight, std::move(choose),
            [query](OpenNetwork& library, const Args& args, Outcome& outcome) {
                LibrarySide side(library);
                Unpack in(args);
                query(side, in, outcome);
            },
            [query](Network& model, const Args& args, Outcome& outcome) {
                ModelSide side(model);
                Unpack in(args);
                query(side, in, outcome);
            }};
}

std::vector<StepKind> SpanQueries();
std::vector<StepKind> WebQueries();
std::vector<StepKind> RouteQueries();

} // namespace reference
