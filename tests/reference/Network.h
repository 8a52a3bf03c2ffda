// The sewer network as its contract tells it: every query is the plain scan of its definition over the records of the
// model. Nothing is optimised and nothing is shared with the library but the list of types.
//
// Queries have the names and arguments of the library's, with 32-bit ids and vectors: a list argument may hold entries
// before the call, and holds afterwards what the library's list holds. Object lists are lists of the model's records;
// where the library hands out copies the model hands out the live records, and the driver compares contents.
// Edits and how they plug into the driver: NetworkScript.h.
#pragma once

#include "objects/ObjectTypes.h"
#include "reference/Model.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace reference {

using Type = objectdata::OBJECTTYPE;
using Ids = std::vector<int>;
using Records = std::vector<Record*>; // live records of the model's tables
using Values = std::vector<std::pair<std::wstring, std::wstring>>;
using NodeMap = std::vector<std::pair<int, Ids>>; // in the order in which the keys were first set

// ---- links and numbers of a record ----
inline int& UpperNode(Record& span)
{
    return span.links[0];
}
inline int& LowerNode(Record& span)
{
    return span.links[1];
}
inline int& RouteOf(Record& span)
{
    return span.links[2];
}
inline int& WebOf(Record& route)
{
    return route.links[0];
}
inline int& ConnectOf(Record& route)
{
    return route.links[1];
}
inline int& OwnerOf(Record& record)
{
    return record.links[0];
}

// Leading blanks, a sign, digits with a fraction and an exponent; 0 when there is no number.
double ReadDouble(const std::wstring& text);
double Double(const Record& record, const wchar_t* key); // 0 when absent
std::wstring IntText(int number);
std::wstring DoubleText(double number); // 13 decimals
bool Contains(const Ids& ids, int id);
int CompareDouble(double a, double b, double tolerance); // 1, 0, -1

class Network {
public:
    explicit Network(Model& model) : m_model(model) {}

    // ---- records ----
    Model& Base() const { return m_model; }
    Table& operator[](Type type) const { return m_model[type]; }
    // The live records of a type in table order. A list of its own: the table may change while it is walked.
    Records All(Type type) const;
    // The first in table order; null for an unknown id.
    Record* Find(Type type, int id) const { return m_model[type].Find(id); }
    Record* Span(int id) const { return Find(objectdata::Span, id); }
    Record* Route(int id) const { return Find(objectdata::Route, id); }
    Record* Node(int id) const { return Find(objectdata::Node, id); }
    Record* Web(int id) const { return Find(objectdata::Web, id); }
    // The records whose link number `link` is `id`, in table order.
    Records Linked(Type type, std::size_t link, int id) const;
    Records SpansOf(int routeId) const { return Linked(objectdata::Span, 2, routeId); }
    Records RoutesOf(int webId) const { return Linked(objectdata::Route, 0, webId); }
    static Ids IdsOf(const Records& records);

    // What the library's Create<T> does in itself: an id is used up, the record goes into its table, defaults and then
    // `values` are written. Null when the table refuses the id, and, with the record left behind in the table without
    // attributes, when the type has no defaults at present.
    Record* Create(Type type, const Ids& links, const Values& values = {});
    // As the library's Remove: by id, the first one's place counts; false for an unknown id.
    bool Remove(Type type, int id);
    // The default attributes that the driver installs for a type.
    static Values DefaultsOf(Type type);
    std::set<Type> withoutDefaults;

    // ---- order within a route (NetworkQueries.cpp) ----
    bool GetMostLowerNodeId(int routeId, int& nodeId) const;
    bool GetMostUpperNodeId(int routeId, int& nodeId) const;
    bool GetLastSpanFromRoute(int routeId, int& spanId) const;
    bool GetSortSpanInRoute(int routeId, Ids& spanIds, bool lowestFirst) const;
    bool GetSortSpanInRoute(int routeId, Records& spans, bool lowestFirst) const;
    bool GetSortSpanInRouteStrict(int routeId, Records& spans, bool lowestFirst) const; // the const form
    bool GetSortUpNodeInRoute(int routeId, Ids& nodeIds) const;
    bool GetSortSpanNodeInRoute(int routeId, Records& spans, Records& nodes) const;
    bool GetSpanObjectListFromRoute(int routeId, bool lowestFirst, Records& spans, bool sorted) const;
    int GetSpanNumInRoute(int routeId) const;
    bool GetRouteLength(int routeId, double& length) const;
    bool IsFirstSpanAndGetSecondSpan(int spanId, int& secondSpanId) const;

    // ---- neighbours of a span or a node ----
    bool GetLowerSpan(int spanId, int& lowerSpanId) const;
    void GetLowerSpanObjectList(int spanId, Records& spans) const;
    void GetLowerSpanObjectList(int spanId, Ids& spanIds) const;
    bool GetLowerSpanObjectList(int fromSpanId, int toSpanId, Ids& spanIds) const;
    bool GetFlowInSpanToSpan(int webId, int spanId, Ids& spanIds) const;
    int GetFlowInSpanToSpan(int spanId, Records& spans) const;
    int GetUpperSpan(int spanId, bool sort, Ids& spanIds) const;
    void GetUpperSpanObjectList(int webId, int spanId, Ids& spanIds) const;
    bool GetConnectALlSpanToNode(int nodeId, Ids& spanIds) const;
    bool GetSpanConnectUpperNode(int nodeId, int routeId, int& spanId) const;
    bool GetSpanConnectLowerNode(int nodeId, int routeId, int& spanId) const;
    bool GetSpanConnectUpperNode(int nodeId, const Ids& spanIds, int& spanId) const;
    bool GetSpanConnectLowerNode(int nodeId, const Ids& spanIds, int& spanId) const;
    bool GetFlowInSpanToNode(int nodeId, const Ids& spanIds, Ids& flowIn) const;
    bool IsConnectSpanToNode(int nodeId, const Ids& spanIds) const;
    bool GetAllLowerNodeFromSpan(const Ids& spanIds, Ids& nodeIds) const;
    bool GetAllUpperNodeFromSpan(const Ids& spanIds, Ids& nodeIds) const;
    bool IsEqualCoordNode(int nodeId, int otherNodeId) const;
    int GetIcpinqLowinvSpanID(int icpInqId) const;
    bool GetOverlapNodeFromOtherWebs(int webId, int nodeId, Ids& nodeIds) const;

    // ---- lists and numbers of a whole web (WebQueries.cpp) ----
    bool GetSpanFromWeb(int webId, Ids& spanIds) const;
    bool GetSpanFromWeb(int webId, Records& spans) const;
    bool GetRouteIdList(int webId, Ids& routeIds) const;
    bool GetSpanIdList(int routeId, Ids& spanIds) const;
    bool GetNodeIdList(int webId, Ids& nodeIds) const;
    bool GetRouteObjectListFromWeb(int webId, Records& routes, bool rising, bool sorted) const;
    bool GetSpanObjectListFromWeb(int webId, Records& spans) const;
    bool GetSpanObjectListFromWebCopy(int webId, Records& spans) const;
    bool GetNodeObjectListFromWeb(int webId, Records& nodes, bool sorted) const;
    bool CreateMapLowNodeSpan(int webId, NodeMap& spansByNode) const;
    void GetSpanFormProject(Ids& spanIds) const;
    int GetSpanNumInWeb(int webId) const;
    int GetRouteNumInWeb(int webId) const;
    int GetWbareasetflg(int spanId) const;
    bool GetSpanArea(int spanId, double& area) const;
    bool GetRouteArea(int routeId, double& area) const;
    bool GetWebArea(int webId, double& area) const;
    bool GetRouteAreaT(int routeId, double& area, bool flag) const;
    bool GetSpanSyakyori(int spanId, double& length) const;

    // ---- from a record to its web; by id ----
    int GetWebIdFromSpan(int id) const;
    int GetWebIdFromNode(int id) const;
    int GetWebIdFromIcpInq(int id) const;
    int GetWebIdFromAreaSet(int id) const;
    int GetWebIdFromOutq(int id) const;
    int GetWebIdFromInters(int id) const;
    int GetWebIdFromLaunit(int id) const;
    int GetWebIdFromVacunit(int id) const;
    int GetWebIdFromSecvalve(int id) const;
    int GetWebIdFromOhaul(int id) const;
    int GetWebIdFormName(const std::wstring& name) const;

    // ---- records of a web, route or span (RecordsOfWebQueries.cpp) ----
    // By type; the library has a member for each. Records hanging on routes, spans or nodes, crossings, coefficients.
    bool GetIdListFromWeb(Type type, int webId, Ids& ids) const;
    bool GetObjectListFromWeb(Type type, int webId, Records& objects) const;
    bool GetIcpInqIdListFromRoute(int routeId, Ids& ids) const;
    bool GetGlChangeIdListFromSpan(int spanId, Ids& ids) const;

    // ---- the tree of routes (RouteQueries.cpp) ----
    int GetConnectRoute(int routeId, const Ids& candidates, Ids& out) const;
    int GetConnectRouteAll(int routeId, Ids& out) const;
    bool GetNextRouteId(int routeId, const Ids& candidates, Ids& out) const;
    bool GetNextRouteIdAll(int routeId, Ids& out) const;
    int GetConnectRoute(const Records& routes, int routeId, Records& out) const; // null entries are allowed
    int GetConnectRoute(Records& routes, int routeId, bool recursive, bool sort, Records& out) const;
    void GetConnectRouteUpperAll(int routeId, const Ids& candidates, Ids& out) const;
    void GetConnectRouteUpperAll(int routeId, const NodeMap& candidatesByConnectId, Ids& out) const;
    void GetConnectRouteUpperAllByOrder(int routeId, const Ids& candidates, Ids& out) const;
    void GetConnectRouteLowerAll(int routeId, const Ids& candidates, Ids& out) const;
    void GetConnectRouteSortOrder(int webId, int routeId, Records& routes) const;
    bool GetRouteIdListFromTo(int fromRouteId, int toRouteId, int webId, Ids& out) const;
    bool GetLowRouteId(const Ids& routeIds, Ids& out) const;
    bool GetUpperRouteId(const Ids& routeIds, Ids& out) const;
    void GetUpperRouteObjectList(int routeId, Ids& out) const;
    bool GetRouteBySphst(int webId, Ids& out) const;
    bool GetRouteBySphdt(int webId, Ids& out) const;
    bool GetOverlapRouteFromWebs(int webId, const Ids& nodeIds, Ids& outSpans, Ids& outNodes) const;
    bool GetMostUpperNode(int webId, Ids& nodeIds) const;
    bool GetMostUpperRouteByNode(int webId, Ids& routeIds) const;
    int GetRouteObjectArrayFromWeb(int webId, Records& routes) const;
    int GetSpanObjectArrayFromRoute(int routeId, Records& spans) const;
    void ReverseIdList(Ids& ids) const;

    // ---- flow ends ----
    bool GetFlowEndNodeId(int webId, int& nodeId) const;
    bool GetFlowEndNodeIdList(int webId, Ids& nodeIds) const;
    bool GetFlowEndFixedRoute(int webId, Ids& routeIds) const;
    bool IsDivideNode(int nodeId, int& ownerId) const;
    bool CheckDuplicateFlowEndName(int webId, const std::wstring& name) const;

    // ---- the three sorts that queries need; the others are in NetworkSorts.h ----
    void SortFlowOrder(Ids& routeIds) const; // exchange sort; an id without an object counts with 0
    void SortFlowOrder(Records& routes) const;
    void SortRoutesByFlowOrder(Records& routes, int low, int high) const; // middle quicksort (sort_route_by_floworder)
    void SortOrderRoute(Records& routes) const;                           // middle quicksort on "order", whole list
    void SortOrderSpanLowercentinv(Ids& spanIds) const;                   // exchange sort, falling within 1e-5

private:
    using Way = Ids; // the routes from the start of a walk to the present one
    void UpperAll(int routeId, const NodeMap& byConnectId, Way& way, Ids& out) const;
    void UpperAllByOrder(int routeId, const Ids& candidates, Way& way, Ids& out) const;
    void SortOrder(int webId, int routeId, Way& way, Records& routes) const;
    bool RouteBy(const wchar_t* key, int webId, Ids& out) const;
    bool RouteAreaOver(int routeId, double& area) const;

    Model& m_model;
};

} // namespace reference
