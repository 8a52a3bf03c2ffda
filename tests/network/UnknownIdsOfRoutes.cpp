// Rows of the route tree, the flow ends and the orders.

#include "network/UnknownIds.h"

using enum objectdata::OBJECTTYPE;
using support::Routes;

namespace unknown_ids {

namespace {

std::vector<long> allRoutes(const Manager& m)
{
    std::vector<long> ids;
    for (const CRoute* route : m.GetRouteDb())
        ids.push_back(route->GetId32());
    return ids;
}

} // namespace

std::vector<Row> routeRows()
{
    return {
        zeroIsValid({"GetConnectRoute", Route,
                     [](Manager& m, const Others&, long id) {
                         Ids out;
                         const Ids routes(allRoutes(m));
                         return m.GetConnectRoute(id, routes, out) == 0 && !m.GetNextRouteId(id, routes, out) &&
                                m.GetConnectRouteAll(id, out) == 0 && !m.GetNextRouteIdAll(id, out) && out.IsEmpty();
                     }}),
        {"GetConnectRouteCandidates", Route,
         [](Manager& m, const Others& o, long id) {
             Ids out;
             return m.GetConnectRoute(o.route, Ids{id}, out) == 0 && !m.GetNextRouteId(o.route, Ids{id}, out) &&
                    m.GetConnectRoute(0, Ids{id}, out) == 0 && out.IsEmpty();
         }},
        zeroIsValid({"GetConnectRouteArrays", Route,
                     [](Manager& m, const Others& o, long id) {
                         CArray<CRoute*> routes;
                         CArray<const CRoute*> constRoutes;
                         m.GetRouteObjectArrayFromWeb(o.web, routes);
                         m.GetRouteObjectArrayFromWeb(o.web, constRoutes);
                         const auto before = routes.GetSize();
                         CArray<CRoute*> out;
                         CArray<const CRoute*> constOut;
                         return m.GetConnectRoute(routes, id, out) == 0 &&
                                m.GetConnectRoute(constRoutes, id, constOut) == 0 &&
                                m.GetConnectRoute(routes, id, true, true, out) == 0 &&
                                m.GetConnectRoute(constRoutes, id, true, true, constOut) == 0 &&
                                routes.GetSize() == before && out.IsEmpty() && constOut.IsEmpty();
                     }}),
        zeroIsValid({"GetConnectRouteUpperAll", Route,
                     [](Manager& m, const Others&, long id) {
                         Ids out;
                         const Ids routes(allRoutes(m));
                         const IdMap none;
                         m.GetConnectRouteUpperAll(id, routes, out);
                         m.GetConnectRouteUpperAll(id, none, out);
                         m.GetConnectRouteUpperAllByOrder(id, routes, out);
                         return out.IsEmpty();
                     }}),
        {"GetConnectRouteUpperAllCandidates", Route,
         [](Manager& m, const Others& o, long id) {
             Ids out;
             m.GetConnectRouteUpperAll(o.route, Ids{id}, out);
             m.GetConnectRouteUpperAllByOrder(o.route, Ids{id}, out);
             return out.IsEmpty();
         }},
        {"GetConnectRouteLowerAll", Route,
         [](Manager& m, const Others& o, long id) {
             Ids out;
             m.GetConnectRouteLowerAll(id, Ids(allRoutes(m)), out);
             m.GetConnectRouteLowerAll(o.route, Ids{id}, out);
             return out.IsEmpty();
         }},
        {"GetConnectRouteSortOrderWeb", Web,
         [](Manager& m, const Others&, long id) {
             Routes out;
             m.GetConnectRouteSortOrder(id, 0, out);
             return out.IsEmpty();
         }},
        zeroIsValid({"GetConnectRouteSortOrder", Route,
                     [](Manager& m, const Others& o, long id) {
                         Routes out;
                         m.GetConnectRouteSortOrder(o.web, id, out);
                         return out.IsEmpty();
                     }}),
        {"GetRouteIdListFromTo", Route,
         [](Manager& m, const Others& o, long id) {
             Ids out;
             return !m.GetRouteIdListFromTo(id, o.route, o.web, out) &&
                    !m.GetRouteIdListFromTo(o.route, id, o.web, out) && out.IsEmpty();
         }},
        {"GetRouteIdListFromToWeb", Web,
         [](Manager& m, const Others& o, long id) {
             Ids out;
             return !m.GetRouteIdListFromTo(o.route, o.route + 1, id, out) && out.IsEmpty();
         }},
        {"GetLowAndUpperRouteId", Route,
         [](Manager& m, const Others&, long id) {
             Ids out;
             m.GetLowRouteId(Ids{id}, out);
             return !m.GetUpperRouteId(Ids{id}, out) && out.IsEmpty();
         }},
        fills("GetUpperRouteObjectList", Route, &M::GetUpperRouteObjectList),
        lists("GetRouteBySphst", Web, &M::GetRouteBySphst),
        lists("GetRouteBySphdt", Web, &M::GetRouteBySphdt),
        {"GetOverlapRouteFromWebsWeb", Web,
         [](Manager& m, const Others& o, long id) {
             Ids spans;
             Ids nodes;
             return !m.GetOverlapRouteFromWebs(id, Ids{o.node}, spans, nodes) && spans.IsEmpty() && nodes.IsEmpty();
         }},
        {"GetOverlapRouteFromWebs", Node,
         [](Manager& m, const Others& o, long id) {
             Ids spans;
             Ids nodes;
             return !m.GetOverlapRouteFromWebs(o.web, Ids{id}, spans, nodes) && spans.IsEmpty() && nodes.IsEmpty();
         }},
        lists("GetMostUpperNode", Web, &M::GetMostUpperNode),
        lists("GetMostUpperRouteByNode", Web, &M::GetMostUpperRouteByNode),
        counts<CArray<CRoute*>>("GetRouteObjectArrayFromWeb", Web, &M::GetRouteObjectArrayFromWeb),
        counts<CArray<const CRoute*>>("GetRouteObjectArrayFromWebConst", Web, &M::GetRouteObjectArrayFromWeb),
        counts("GetSpanObjectArrayFromRoute", Route, &M::GetSpanObjectArrayFromRoute),
        {"ConnectRoute", Route,
         [](Manager& m, const Others& o, long id) { return !m.ConnectRoute(id, o.route) && !m.ConnectRoute(id, 0); }},
        mayChange(zeroIsValid({"ConnectRouteConnect", Route,
                               [](Manager& m, const Others& o, long id) { return !m.ConnectRoute(o.route, id); }})),
        {"ChangeConnectRoute", Route,
         [](Manager& m, const Others& o, long id) {
             return !m.ChangeConnectRoute(id, o.route, o.web, o.web) && !m.ChangeConnectRoute(id, 0, o.web, o.web);
         }},
        mayChange(zeroIsValid(
            {"ChangeConnectRouteConnect", Route,
             [](Manager& m, const Others& o, long id) { return !m.ChangeConnectRoute(o.route, id, o.web, o.web); }})),
        mayChange({"ChangeConnectRouteWeb", Web,
                   [](Manager& m, const Others& o, long id) {
                       m.ChangeConnectRoute(o.route, 0, id, id);
                       return true;
                   }}),
        {"UpdateConnectRouteNum", Web,
         [](Manager& m, const Others&, long id) {
             m.UpdateConnectRouteNum(id);
             return true;
         }},
        {"UpdateManHoleNumSameRouteNum", Route,
         [](Manager& m, const Others&, long id) {
             CStringArray oldNumbers;
             CStringArray newNumbers;
             m.UpdateManHoleNumSameRouteNum(id, oldNumbers, newNumbers, true);
             return oldNumbers.IsEmpty() && newNumbers.IsEmpty();
         }},
        {"ReverseSpanInRoute", Route,
         [](Manager& m, const Others&, long id) {
             m.ReverseSpanInRoute(id);
             return true;
         }},
        zeroIsValid({"SetUpperRouteObject", Route,
                     [](Manager& m, const Others&, long id) {
                         m.SetUpperRouteObject(id, 12345);
                         return true;
                     }}),
        finds("GetFlowEndNodeId", Web, &M::GetFlowEndNodeId),
        lists("GetFlowEndNodeIdList", Web, &M::GetFlowEndNodeIdList),
        {"GetFlowEndFixedRoute", Web,
         [](Manager& m, const Others&, long id) {
             Ids routes;
             return m.GetFlowEndFixedRoute(id, routes) && routes.IsEmpty();
         }},
        {"ReSetFlowEndNode", Route,
         [](Manager& m, const Others&, long id) {
             Ids routes;
             return !m.ReSetFlowEndNode(id, L"end", routes) && routes.IsEmpty();
         }},
        {"ReSetFlowEndNodeByNode", Route,
         [](Manager& m, const Others& o, long id) {
             Ids rewired;
             Ids reversed;
             return !m.ReSetFlowEndNodeByNode(id, o.node, L"end", rewired, reversed) && rewired.IsEmpty() &&
                    reversed.IsEmpty();
         }},
        mayChange({"ReSetFlowEndNodeByNodeNode", Node,
                   [](Manager& m, const Others& o, long id) {
                       Ids rewired;
                       Ids reversed;
                       m.ReSetFlowEndNodeByNode(o.route, id, L"end", rewired, reversed);
                       return true;
                   }}),
        {"ReSetRouteSortOrderWeb", Web,
         [](Manager& m, const Others&, long id) {
             m.ReSetRouteSortOrder(id, 0);
             return true;
         }},
        zeroIsValid({"ReSetRouteSortOrder", Route,
                     [](Manager& m, const Others& o, long id) {
                         m.ReSetRouteSortOrder(o.web, id);
                         return true;
                     }}),
        finds("IsDivideNode", Node, &M::IsDivideNode),
        {"ReleaseDivideNode", Node,
         [](Manager& m, const Others&, long id) {
             Ids nodes;
             return !m.ReleaseDivideNode(id, nodes) && nodes.IsEmpty();
         }},
        {"CheckDuplicateFlowEndName", Web,
         [](Manager& m, const Others&, long id) { return m.CheckDuplicateFlowEndName(id, L"M"); }},
    };
}

std::vector<Row> orderRows()
{
    return {
        sortsRoutes("SortRouteBranchUpper", &M::SortRouteBranchUpper),
        sortsRoutes("SortRouteBranchLower", &M::SortRouteBranchLower),
        sortsRoutes("SortRouteMaxExtendUpper", &M::SortRouteMaxExtendUpper),
        sortsRoutes("SortRouteMaxExtendLower", &M::SortRouteMaxExtendLower),
        {"SetSpanMaxExtend", Web, [](Manager& m, const Others&, long id) { return !m.SetSpanMaxExtend(id); }},
        sortsRoutes("SortRouteRouteNumber", &M::SortRouteRouteNumber),
        sortsRoutes("SortRouteRouteNumberN3", &M::SortRouteRouteNumberN3),
        sortsRoutes("SortRouteInputNumber", &M::SortRouteInputNumber),
        {"RunBranchSteps", Route,
         [](Manager& m, const Others& o, long id) {
             M::SortBranches chains;
             Ids out;
             tagSortBranch chain;
             chain.routeIds.AddTail(id);
             chain.routeIds.AddTail(o.route);
             const auto run = [&](void (M::*step)(tagSortBranch*, M::SortBranches&, IdList&) const) {
                 out.RemoveAll();
                 chains.AddTail(&chain);
                 (m.*step)(&chain, chains, out);
                 return chains.IsEmpty() && toVector(out) == std::vector<long>{id, o.route};
             };
             return run(&M::RunBuranchSort) && run(&M::RunBuranchMaxExtend) && run(&M::RunBuranchExtendReverse);
         }},
        {"RunSetSplent", Route,
         [](Manager& m, const Others&, long id) {
             M::SortBranches chains;
             Ids done;
             tagSortBranch chain;
             chain.routeIds.AddTail(id);
             tagSortBranch other;
             chains.AddTail(&chain);
             chains.AddTail(&other);
             return !m.RunSetSplent(&chain, chains, done);
         }},
        {"GetBuranchPoint", Route,
         [](Manager& m, const Others& o, long id) {
             M::SortBranches chains;
             tagSortBranch chain;
             chain.routeIds.AddTail(o.route);
             chains.AddTail(&chain);
             return m.GetBuranchPoint(id, chains) == nullptr &&
                    m.GetAndRemoveBuranchPoint(id, chains, &chain, Ids()) == nullptr && chains.GetCount() == 1;
         }},
        sortsAll("SortFlowOrder", Route, &M::SortFlowOrder),
        {"SortOrderRoute", Route,
         [](Manager& m, const Others& o, long id) {
             Ids ids{id, o.route, id};
             m.SortOrderRoute(ids, -1, -1);
             return ids.GetCount() == 3;
         }},
        sortsAll("SortOrderOutq", Outq, &M::SortOrderOutq),
        sortsAll("SortOrderAreaInq", AreaInq, &M::SortOrderAreaInq),
        sortsAll("SortOrderAreaOutq", AreaOutq, &M::SortOrderAreaOutq),
        sortsAll("SortOrderFixInq", FixInq, &M::SortOrderFixInq),
        sortsAll("SortOrderIcpInq", IcpInq, &M::SortOrderIcpInq),
        sortsAll("SortOrderMountInq", MountInq, &M::SortOrderMountInq),
        sortsAll("SortOrderWeb", Web, &M::SortOrderWeb),
        sortsAll("SortOrderProfilearea", Profilearea, &M::SortOrderProfilearea),
        sortsAll("SortOrderSheetarea", Sheetarea, &M::SortOrderSheetarea),
        sortsAll("SortOrderProfilelayout", Profilelayout, &M::SortOrderProfilelayout),
        sortsAll("SortOrderDrawbeltdat", Drawbeltdat, &M::SortOrderDrawbeltdat),
        sortsAll("SortOrderDrawsecinfodat", Drawsecinfodat, &M::SortOrderDrawsecinfodat),
        sortsAll("SortOrderSpanLowercentinv", Span, &M::SortOrderSpanLowercentinv),
        {"ReNumberOrderWeb", Web,
         [](Manager& m, const Others&, long id) {
             Ids ids{id};
             m.ReNumberOrderWeb(ids);
             return true;
         }},
        {"ReNumberOrderSecgrouprec", SectGroupRec,
         [](Manager& m, const Others&, long id) {
             m.ReNumberOrderSecgrouprec(Ids{id});
             return true;
         }},
        sortsKnown("SortInareasetIdList", Inareaset, &M::SortInareasetIdList),
        sortsKnown("SortOutareasetIdList", Outareaset, &M::SortOutareasetIdList),
        sortsKnown("SortAreasetIDList", AreaSet, &M::SortAreasetIDList),
        sortsKnown("SortDrawbelttxIDList", Drawbelttx, &M::SortDrawbelttxIDList),
        sortsKnown("SortExecutionIDList", Execution, &M::SortExecutionIDList),
        sortsKnown("SortRetainIDList", Retain, &M::SortRetainIDList),
        sortsKnown("SortTimberIDList", Timber, &M::SortTimberIDList),
        sortsKnown("SortFoundIDList", Foundation, &M::SortFoundIDList),
        sortsKnown("SortManholeIDList", ManHole, &M::SortManholeIDList),
        sortsKnown("SortSectIDList", Section, &M::SortSectIDList),
        sortsKnown("SortSectGroupIDList", SectGroup, &M::SortSectGroupIDList),
        sortsKnown("SortSectGroupRecIDList", SectGroupRec, &M::SortSectGroupRecIDList),
        {"SortPipeIDList", Pipe,
         [](Manager& m, const Others&, long id) {
             for (int pipeClass = -1; pipeClass <= 5; ++pipeClass) {
                 Ids ids{id};
                 Ids rest;
                 if (!m.SortPipeIDList(pipeClass, ids, rest)) continue;
                 if (!ids.IsEmpty() || toVector(rest) != std::vector<long>{id}) return false;
             }
             return true;
         }},
    };
}

} // namespace unknown_ids
