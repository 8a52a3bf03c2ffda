// Rows of the queries for spans, nodes and whole webs.

#include "network/UnknownIds.h"

using enum objectdata::OBJECTTYPE;
using support::Nodes;
using support::Routes;
using support::Spans;

namespace unknown_ids {

std::vector<Row> spanRows()
{
    return {
        finds("GetMostLowerNodeId", Route, &M::GetMostLowerNodeId),
        finds("GetMostUpperNodeId", Route, &M::GetMostUpperNodeId),
        finds("GetLastSpanFromRoute", Route, &Manager::GetLastSpanFromRoute),
        {"GetSortSpanInRoute", Route,
         [](Manager& m, const Others&, long id) {
             Ids ids;
             Spans spans;
             CList<const CSpan*> constSpans;
             for (const bool lowestFirst : {false, true})
                 if (m.GetSortSpanInRoute(id, ids, lowestFirst) || m.GetSortSpanInRoute(id, spans, lowestFirst) ||
                     m.GetSortSpanInRoute(id, constSpans, lowestFirst))
                     return false;
             return ids.IsEmpty() && spans.IsEmpty() && constSpans.IsEmpty();
         }},
        lists("GetSortUpNodeInRoute", Route, &M::GetSortUpNodeInRoute),
        {"GetSortSpanNodeInRoute", Route,
         [](Manager& m, const Others&, long id) {
             Spans spans;
             Nodes nodes;
             return !m.GetSortSpanNodeInRoute(id, spans, nodes) && spans.IsEmpty() && nodes.IsEmpty();
         }},
        {"GetSpanObjectListFromRoute", Route,
         [](Manager& m, const Others&, long id) {
             Spans spans;
             CList<const CSpan*> constSpans;
             for (const bool sorted : {false, true})
                 if (m.GetSpanObjectListFromRoute(id, true, spans, sorted) ||
                     m.GetSpanObjectListFromRoute(id, true, constSpans, sorted))
                     return false;
             return spans.IsEmpty() && constSpans.IsEmpty();
         }},
        zero("GetSpanNumInRoute", Route, &M::GetSpanNumInRoute),
        measures("GetRouteLength", Route, &M::GetRouteLength),
        finds("IsFirstSpanAndGetSecondSpan", Span, &M::IsFirstSpanAndGetSecondSpan),
        finds("GetLowerSpan", Span, &M::GetLowerSpan),
        fills<Spans>("GetLowerSpanObjectListObjects", Span, &M::GetLowerSpanObjectList),
        fills<IdList>("GetLowerSpanObjectListIds", Span, &M::GetLowerSpanObjectList),
        {"GetLowerSpanObjectListFrom", Span,
         [](Manager& m, const Others& o, long id) {
             Ids ids;
             return !m.GetLowerSpanObjectList(id, o.span, ids) && ids.IsEmpty();
         }},
        {"GetLowerSpanObjectListTo", Span,
         [](Manager& m, const Others& o, long id) {
             Ids ids;
             return !m.GetLowerSpanObjectList(o.span, id, ids) && ids.IsEmpty();
         }},
        {"GetFlowInSpanToSpanWeb", Web,
         [](Manager& m, const Others& o, long id) {
             Ids ids;
             return !m.GetFlowInSpanToSpan(id, o.span, ids) && ids.IsEmpty();
         }},
        {"GetFlowInSpanToSpan", Span,
         [](Manager& m, const Others& o, long id) {
             Ids ids;
             return !m.GetFlowInSpanToSpan(o.web, id, ids) && ids.IsEmpty();
         }},
        counts<CArray<const CSpan*>>("GetFlowInSpanToSpanArray", Span, &M::GetFlowInSpanToSpan),
        {"GetUpperSpan", Span,
         [](Manager& m, const Others&, long id) {
             Ids ids;
             return m.GetUpperSpan(id, true, ids) == 0 && m.GetUpperSpan(id, false, ids) == 0 && ids.IsEmpty();
         }},
        {"GetUpperSpanObjectListWeb", Web,
         [](Manager& m, const Others& o, long id) {
             Ids ids;
             m.GetUpperSpanObjectList(id, o.span, ids);
             return ids.IsEmpty();
         }},
        {"GetUpperSpanObjectList", Span,
         [](Manager& m, const Others& o, long id) {
             Ids ids;
             m.GetUpperSpanObjectList(o.web, id, ids);
             return ids.IsEmpty();
         }},
        lists("GetConnectALlSpanToNode", Node, &M::GetConnectALlSpanToNode),
        {"GetSpanConnectNode", Node,
         [](Manager& m, const Others& o, long id) {
             long span = -77;
             const Ids spans{o.span};
             return !m.GetSpanConnectUpperNode(id, o.route, span) && !m.GetSpanConnectLowerNode(id, o.route, span) &&
                    !m.GetSpanConnectUpperNode(id, spans, span) && !m.GetSpanConnectLowerNode(id, spans, span) &&
                    span == -77;
         }},
        {"GetSpanConnectNodeRoute", Route,
         [](Manager& m, const Others& o, long id) {
             long span = -77;
             return !m.GetSpanConnectUpperNode(o.node, id, span) && !m.GetSpanConnectLowerNode(o.node, id, span) &&
                    span == -77;
         }},
        {"GetSpanConnectNodeSpans", Span,
         [](Manager& m, const Others& o, long id) {
             long span = -77;
             const Ids spans{id};
             return !m.GetSpanConnectUpperNode(o.node, spans, span) &&
                    !m.GetSpanConnectLowerNode(o.node, spans, span) && span == -77;
         }},
        {"GetFlowInSpanToNode", Node,
         [](Manager& m, const Others& o, long id) {
             Ids found;
             return !m.GetFlowInSpanToNode(id, Ids{o.span}, found) && found.IsEmpty() &&
                    !m.IsConnectSpanToNode(id, Ids{o.span});
         }},
        {"GetFlowInSpanToNodeSpans", Span,
         [](Manager& m, const Others& o, long id) {
             Ids found;
             return !m.GetFlowInSpanToNode(o.node, Ids{id}, found) && found.IsEmpty() &&
                    !m.IsConnectSpanToNode(o.node, Ids{id});
         }},
        {"GetAllNodesFromSpan", Span,
         [](Manager& m, const Others&, long id) {
             Ids nodes;
             return m.GetAllLowerNodeFromSpan(Ids{id}, nodes) && m.GetAllUpperNodeFromSpan(Ids{id}, nodes) &&
                    nodes.IsEmpty();
         }},
        {"IsEqualCoordNode", Node,
         [](Manager& m, const Others& o, long id) {
             return !m.IsEqualCoordNode(id, o.node) && !m.IsEqualCoordNode(o.node, id) && !m.IsEqualCoordNode(id, id);
         }},
        zero("GetIcpinqLowinvSpanID", IcpInq, &M::GetIcpinqLowinvSpanID),
        {"GetOverlapNodeFromOtherWebs", Node,
         [](Manager& m, const Others& o, long id) {
             Ids nodes;
             return !m.GetOverlapNodeFromOtherWebs(o.web, id, nodes) && nodes.IsEmpty();
         }},
    };
}

std::vector<Row> webRows()
{
    return {
        lists<IdList>("GetSpanFromWebIds", Web, &M::GetSpanFromWeb),
        lists<Spans>("GetSpanFromWebObjects", Web, &M::GetSpanFromWeb),
        lists("GetNodeIdList", Web, &M::GetNodeIdList),
        lists("GetRouteIdList", Web, &M::GetRouteIdList),
        lists("GetSpanIdList", Route, &M::GetSpanIdList),
        {"GetRouteObjectListFromWeb", Web,
         [](Manager& m, const Others&, long id) {
             Routes routes;
             return !m.GetRouteObjectListFromWeb(id, routes, true, true) &&
                    !m.GetRouteObjectListFromWeb(id, routes, false, false) && routes.IsEmpty();
         }},
        lists("GetSpanObjectListFromWeb", Web, &M::GetSpanObjectListFromWeb),
        {"GetSpanObjectListFromWebCopy", Web,
         [](Manager& m, const Others&, long id) {
             Spans spans;
             m.GetSpanObjectListFromWebCopy(id, spans);
             return spans.IsEmpty();
         }},
        {"GetNodeObjectListFromWeb", Web,
         [](Manager& m, const Others&, long id) {
             Nodes nodes;
             m.GetNodeObjectListFromWeb(id, nodes, true);
             return !m.GetNodeObjectListFromWeb(id, nodes, false) && nodes.IsEmpty();
         }},
        {"CreateMapLowNodeSpan", Web,
         [](Manager& m, const Others&, long id) {
             IdMap map;
             return !m.CreateMapLowNodeSpan(id, map) && map.IsEmpty();
         }},
        zero("GetSpanNumInWeb", Web, &M::GetSpanNumInWeb),
        zero("GetRouteNumInWeb", Web, &M::GetRouteNumInWeb),
        zero("GetWbareasetflg", Span, &M::GetWbareasetflg),
        measures("GetSpanArea", Span, &M::GetSpanArea),
        measures("GetRouteArea", Route, &M::GetRouteArea),
        measures("GetWebArea", Web, &M::GetWebArea),
        {"GetRouteAreaT", Route,
         [](Manager& m, const Others&, long id) {
             double area = 0.0;
             return !m.GetRouteAreaT(id, area, false) && !m.GetRouteAreaT(id, area, true) && area == 0.0;
         }},
        measures("GetSpanSyakyori", Span, &M::GetSpanSyakyori),
        zero<long>("GetWebIdFromSpan", Span, &M::GetWebIdFromSpan),
        zero<long>("GetWebIdFromNode", Node, &M::GetWebIdFromNode),
        zero<long>("GetWebIdFromIcpInq", IcpInq, &M::GetWebIdFromIcpInq),
        zero<long>("GetWebIdFromAreaSet", AreaSet, &M::GetWebIdFromAreaSet),
        zero<long>("GetWebIdFromOutq", Outq, &M::GetWebIdFromOutq),
        zero<long>("GetWebIdFromInters", Inters, &M::GetWebIdFromInters),
        zero<long>("GetWebIdFromLaunit", Launit, &M::GetWebIdFromLaunit),
        zero<long>("GetWebIdFromVacunit", Vacunit, &M::GetWebIdFromVacunit),
        zero<long>("GetWebIdFromSecvalve", Secvalve, &M::GetWebIdFromSecvalve),
        zero<long>("GetWebIdFromOhaul", Ohaul, &M::GetWebIdFromOhaul),
        lists("GetAreaInqIdListFromWeb", Web, &M::GetAreaInqIdListFromWeb),
        lists("GetAreaOutqIdListFromWeb", Web, &M::GetAreaOutqIdListFromWeb),
        lists("GetFixInqIdListFromWeb", Web, &M::GetFixInqIdListFromWeb),
        lists("GetIcpInqIdListFromWeb", Web, &M::GetIcpInqIdListFromWeb),
        lists("GetIcpInqIdListFromRoute", Route, &M::GetIcpInqIdListFromRoute),
        lists("GetMountInqIdListFromWeb", Web, &M::GetMountInqIdListFromWeb),
        lists("GetOutqIdListFromWeb", Web, &M::GetOutqIdListFromWeb),
        lists("GetGlChangeIdListFromWeb", Web, &M::GetGlChangeIdListFromWeb),
        zeroIsValid(lists("GetGlChangeIdListFromSpan", Span, &M::GetGlChangeIdListFromSpan)), // records on no span
        lists("GetIntersIdListFromWeb", Web, &M::GetIntersIdListFromWeb),
        lists("GetIntPosIdListFromWeb", Web, &M::GetIntPosIdListFromWeb),
        lists("GetLateralIdListFromWeb", Web, &M::GetLateralIdListFromWeb),
        lists("GetSecvalveIdListFromWeb", Web, &M::GetSecvalveIdListFromWeb),
        lists("GetOhaulIdListFromWeb", Web, &M::GetOhaulIdListFromWeb),
        lists("GetAreaInqObjectListFromWeb", Web, &M::GetAreaInqObjectListFromWeb),
        lists("GetAreaOutqObjectListFromWeb", Web, &M::GetAreaOutqObjectListFromWeb),
        lists("GetFixInqObjectListFromWeb", Web, &M::GetFixInqObjectListFromWeb),
        lists("GetIcpInqObjectListFromWeb", Web, &M::GetIcpInqObjectListFromWeb),
        lists("GetMountInqObjectListFromWeb", Web, &M::GetMountInqObjectListFromWeb),
        lists("GetOutqObjectListFromWeb", Web, &M::GetOutqObjectListFromWeb),
        lists("GetGlChangeObjectListFromWeb", Web, &M::GetGlChangeObjectListFromWeb),
        lists("GetIntersObjectListFromWeb", Web, &M::GetIntersObjectListFromWeb),
        lists("GetIntPosObjectListFromWeb", Web, &M::GetIntPosObjectListFromWeb),
        lists("GetLateralObjectListFromWeb", Web, &M::GetLateralObjectListFromWeb),
        lists("GetVjointObjectListFromWeb", Web, &M::GetVjointObjectListFromWeb),
        lists("GetSecvalveObjectListFromWeb", Web, &M::GetSecvalveObjectListFromWeb),
        lists("GetOhaulObjectListFromWeb", Web, &M::GetOhaulObjectListFromWeb),
        lists("GetRaitoSetObjectListFromWeb", Web, &M::GetRaitoSetObjectListFromWeb),
    };
}

} // namespace unknown_ids
